#pragma once

#include "bigindex.h"

#include <QStringList>

#include <functional>

/// What the programs that measure widgets share.
namespace GuiBench {

/// Opens an index as the default connection, making it where it is not there. @return why that failed
QString openIndex(const QString &path);

/// Makes an index anew: arguments are the word that asks for it, the file, and what part of the whole it
/// shall have, in percent. @return why that failed
QString fillIndex(const QStringList &arguments, BigIndexSize whole);

/**
 * The main() of such a program: an application without the user's settings, offscreen where nothing else is
 * asked for.
 * @param least how many arguments there must be; else the usage is printed
 * @param run is given them; what it answers is an error
 * @return the exit code
 */
int run(int argc, char **argv, int least, const char *usage,
    const std::function<QString(const QStringList &)> &run);

} // namespace GuiBench
