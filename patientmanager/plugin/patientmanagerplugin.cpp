#include "patientmanagerplugin.h"

QObject *PatientManagerPlugin::create(const QString & /*key*/, const QString & /*specification*/)
{
    return nullptr;
}

// Here, so that the metadata is compiled with this file's definitions.
#include "moc_patientmanagerplugin.cpp"
