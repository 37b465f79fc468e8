#include "sessionservices.h"

SessionServices::SessionServices(QObject *parent)
    : QObject(parent)
    , m_programs(new RunningPrograms(this))
{ }
