#pragma once

#include <QList>
#include <QString>

/// The SQL condition "pk is one of these"; of no row where there are none. Few keys make a chain of
/// comparisons; many become ranges and a list, which the database reads in a moment where it would refuse the
/// chain.
QString keyFilter(const QList<qlonglong> &keys);
