#pragma once

#include "sendjob.h"

#include <QSqlQuery>

#include <functional>
#include <optional>

/// The columns of an object, and the object that a row with them holds.
QString sendObjectColumns();
SendObject sendObjectOf(const QSqlQuery &row);

/**
 * Reads what became of the objects of the jobs: a connection of its own that cannot write, waits for nobody
 * and is opened with the first question. For one thread, the GUI's too.
 */
class SendLog
{
public:
    explicit SendLog(QString storePath);
    ~SendLog();
    SendLog(const SendLog &) = delete;
    SendLog &operator=(const SendLog &) = delete;

    /// Part of a job's objects, in their order. Empty where they cannot be read at the moment.
    QVector<SendObject> objects(qint64 job, int first, int count, bool onlyFailed) const;
    /// All of a job's objects, in their order and as they are at one moment, until the visitor returns false.
    /// @return whether they could be read up to there
    bool visit(
        qint64 job, bool onlyFailed, const std::function<bool(const SendObject &object)> &visitor) const;
    /// The files of a job's objects that have not been sent yet, nor given up; nothing where they cannot be
    /// read.
    std::optional<QStringList> waitingPaths(qint64 job) const;
    /// Whether a job may still read a file in a folder: its object has not been accepted, or its files are
    /// not listed yet; also where that cannot be read.
    bool mayNeed(const QString &folder) const;

private:
    bool open() const;
    bool select(QSqlQuery &query, qint64 job, int first, int count, bool onlyFailed) const;

    const QString m_storePath;
    const QString m_name;
};
