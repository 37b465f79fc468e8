#include "patientmanagerplugin.h"

QObject *PatientManagerPlugin::create(const QString & /*key*/, const QString & /*parameters*/)
{
    return nullptr;
}

// Here, so that the metadata is compiled with this file's definitions.
#include "moc_patientmanagerplugin.cpp"
