#include "correctionfinisher.h"

#include "studycorrection.h"

#include <algorithm>

CorrectionFinisher::CorrectionFinisher(QObject *parent)
    : QObject(parent)
{ }

void CorrectionFinisher::begin(const QString &databasePath, const WebService &service)
{
    m_thread.begin([=](const std::atomic<bool> &stop) {
        const QVector<CorrectionReport> reports =
            StudyCorrection(service, stop, [](const CorrectionProgress &) {}).finishBegun(databasePath);
        QMetaObject::invokeMethod(
            this, [this, reports] { tell(reports); }, Qt::QueuedConnection);
    });
}

void CorrectionFinisher::tell(const QVector<CorrectionReport> &reports)
{
    using End = CorrectionReport::End;
    const auto count = [&](End end, bool isLeft) {
        return int(std::count_if(reports.cbegin(), reports.cend(),
            [=](const CorrectionReport &report) { return report.end == end && report.isLeft == isLeft; }));
    };
    const int finished = count(End::Done, false);
    const int undone = count(End::Undone, false);
    const int waiting = count(End::UndoPending, true);
    const int left = int(std::count_if(reports.cbegin(), reports.cend(), [](const CorrectionReport &report) {
        return report.isLeft;
    })) - waiting;
    const int failed = reports.size() - finished - undone - waiting - left;
    QStringList texts;
    if (finished > 0) {
        texts += tr("%Ln interrupted correction(s) of patient data finished", nullptr, finished);
    }
    if (undone > 0) {
        texts += tr("%Ln interrupted correction(s) of patient data taken back", nullptr, undone);
    }
    if (waiting > 0) {
        texts +=
            tr("%Ln interrupted correction(s) of patient data still wait for the service", nullptr, waiting);
    }
    if (left > 0) {
        texts += tr("%Ln interrupted correction(s) of patient data could not be finished yet: left for the "
                    "next time",
            nullptr, left);
    }
    if (failed > 0) {
        texts += tr("%Ln interrupted correction(s) of patient data could not be finished", nullptr, failed);
    }
    if (!texts.isEmpty()) {
        emit ended(texts.join(QStringLiteral(" · ")));
    }
}
