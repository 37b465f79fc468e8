// bench_pictures INDEX ROUNDS: measures thumbnails and preview of the first patient
#include "guibench.h"
#include "measurement.h"
#include "picturebench.h"

int main(int argc, char **argv)
{
    return GuiBench::run(argc, argv, 2, "bench_pictures INDEX ROUNDS", [](const QStringList &arguments) {
        QString error = GuiBench::openIndex(arguments.at(0));
        if (error.isEmpty()) {
            Measurement::print(PictureBench(arguments.at(0), arguments.at(1).toInt()).run());
        }
        return error;
    });
}
