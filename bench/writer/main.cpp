// bench_writer INDEX PER_SECOND SECONDS: works in the window on an index that another program writes to
#include "guibench.h"
#include "measurement.h"
#include "writerbench.h"

int main(int argc, char **argv)
{
    return GuiBench::run(
        argc, argv, 3, "bench_writer INDEX PER_SECOND SECONDS", [](const QStringList &arguments) {
            QString error = GuiBench::openIndex(arguments[0]);
            if (error.isEmpty()) {
                Measurement::print(
                    WriterBench().run(arguments[0], arguments[1].toInt(), arguments[2].toInt()));
            }
            return error;
        });
}
