#include "measurement.h"

#include <QJsonDocument>

#include <algorithm>
#include <cstdio>
#include <ctime>

void Measurement::print(const QJsonObject &result)
{
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

double Measurement::processorMs()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double Measurement::median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}
