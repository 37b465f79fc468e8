#pragma once

#include "sendjob.h"
#include "sentjob.h"

#include <QDateTime>
#include <QString>

/// What the windows say of a send job.
namespace JobText {

/// When it was, here, to the minute.
QString timeOf(const QDateTime &time);
/// As the send dialog knows it.
SendState stateOf(SendJobState state);
/// Who has asked for it: a person, or the forwarding of an import.
QString sourceOf(const SendJob &job);
/// Why it waits and until when, or what there is to know besides the counts; empty for nothing.
QString noticeOf(const SendJob &job);
QString stateOf(const SendObject &object);
/// The peer's word, or why there was none; empty where the object was taken without a word.
QString reasonOf(const SendObject &object);

} // namespace JobText
