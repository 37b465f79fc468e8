#pragma once

#include "patienttreeform.h"
#include "temporaryindex.h"

#include <QComboBox>
#include <QStringList>
#include <QTreeView>

#include <memory>
#include <optional>
#include <utility>

/// Keys as one text, in the order of their texts.
QString text(const QList<qlonglong> &keys);

/// All that a panel says, in the order in which it says it.
class Log
{
public:
    explicit Log(PatientTreeForm *form);
    QStringList take() { return std::exchange(m_lines, {}); }

private:
    void add(const char *name, const QString &value);
    QStringList m_lines;
};

/// A panel over two patients, each with a study, the first one's with two series; its one inquiry finds all.
class TreeFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    void store(const QString &name, const QString &group, const QString &field, const QString &value,
        const QString &logic = QStringLiteral("and"), const QString &symbol = QStringLiteral("=")) const;
    PatientTreeForm &open();
    QTreeView *view() const { return form->findChild<QTreeView *>(); }
    QComboBox *names() const { return form->findChild<QComboBox *>(); }
    void press(const char *button) const;
    QModelIndex row(const QList<int> &path) const;

    const QString all = QStringLiteral("all");
    std::optional<TemporaryIndex> index;
    std::unique_ptr<PatientTreeForm> form;
    std::unique_ptr<Log> log;
    qlonglong patient = 0;
    qlonglong study = 0;
    qlonglong series = 0;
};
