#include "runningcorrection.h"

#include <QVector>

namespace {

QVector<const RunningCorrection *> &all()
{
    static QVector<const RunningCorrection *> corrections;
    return corrections;
}

} // namespace

RunningCorrection::RunningCorrection(std::function<void()> stop)
    : m_stop(std::move(stop))
{
    all().append(this);
}

RunningCorrection::~RunningCorrection()
{
    all().removeOne(this);
}

bool RunningCorrection::isAny()
{
    return !all().isEmpty();
}

void RunningCorrection::stopAll()
{
    for (const RunningCorrection *correction : qAsConst(all())) {
        correction->m_stop();
    }
}
