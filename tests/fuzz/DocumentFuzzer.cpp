#include "tests/motion/DocumentTrial.h"

// Whatever goes wrong ends the program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (const char *problem = problemWith(QByteArrayView(data, static_cast<qsizetype>(size))))
        qFatal("%s", problem);
    return 0;
}
