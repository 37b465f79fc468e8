#include "deletionnotifier.h"

DeletionNotifier::DeletionNotifier(QObject *parent)
    : QObject(parent)
{ }
