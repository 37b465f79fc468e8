#include "uploadcoordinator.h"

UploadCoordinator::UploadCoordinator(QString databasePath, CloudSession session)
    : m_databasePath(std::move(databasePath))
    , m_session(std::move(session))
{
    qRegisterMetaType<UploadTally>();
}

void UploadCoordinator::add(const UploadOrder &order)
{
    UploadTally tally;
    tally.all = order.files.size();
    tally.waiting = tally.all;
    tally.state =
        m_session.isAt(order.service) ? UploadTally::State::Running : UploadTally::State::NeedsSession;
    emit tallied(order.id, tally);
}
