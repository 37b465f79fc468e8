#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>

/**
 * Thumbnails and preview of one patient, shown on the offscreen platform. Times end when what came in is
 * painted; every turn of the events is timed, and the longest counts as the block of the interface.
 */
class PictureBench
{
public:
    PictureBench(QString indexPath, int rounds);

    QJsonObject run();

private:
    struct Turns
    {
        double totalMs = 0;
        double longestMs = 0;
    };

    void thumbnails(QJsonObject &result);
    void leftSelection(QJsonObject &result);
    void scrolling(QJsonObject &result);
    /// Runs events until a condition holds, from a beginning that counts as a turn, too.
    static Turns turn(const std::function<void()> &begin, const std::function<bool()> &done);

    const QString m_index;
    const int m_rounds;
};
