#pragma once

#include <QJsonObject>

#include <vector>

/// What the programs of this folder have in common: how they answer, and how they sum up.
namespace Measurement {

/// Prints the result as one line of JSON on the standard output, for bench/run.
void print(const QJsonObject &result);

/// Processor time of the calling thread so far: what others do on the machine is not in it.
double processorMs();

/// The middle one; the mean of both middle ones where their number is even. Not for an empty list.
double median(std::vector<double> values);

} // namespace Measurement
