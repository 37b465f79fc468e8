#pragma once

#include "sendjob.h"
#include "sentjob.h"

#include <QDateTime>
#include <QString>

/// What the windows say of a send job. It depends on the parameters and the program's language and locale
/// alone: any thread, while neither is being changed.
namespace JobText {

/// When it was, here, to the minute.
QString timeOf(const QDateTime &time);
/// How a job ended, in a sentence with whose images it sent and where to.
QString endOf(const SendJob &job);
/// As the send dialog knows it.
SendState stateOf(SendJobState state);
/// Where to, by the name that people gave it.
QString destinationOf(const SendJob &job);
/// Whose images, or what asked for them where nobody knows.
QString sourceOf(const SendJob &job);
/// Why it waits and until when, or what there is to know besides the counts; empty for nothing.
QString noticeOf(const SendJob &job);
QString stateOf(const SendObject &object);
/// The peer's word, or why there was none; empty where the object was taken without a word.
QString reasonOf(const SendObject &object);

} // namespace JobText
