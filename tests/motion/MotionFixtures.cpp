#include "MotionFixtures.h"

#include "platform/WholeFile.h"

QByteArray motionFile()
{
    return readWholeFile(QStringLiteral(BRIMVALE_TESTS_FOLDER "/fuzz/seeds/motion.motn"))->content;
}
