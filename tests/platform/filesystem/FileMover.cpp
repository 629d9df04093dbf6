#include "platform/filesystem/MoveFile.h"
#include "tests/support/TraceMark.h"

#include <cstdio>

using orvane::test::markTrace;

/// file_mover FROM TO: moves the file without replacing any. Exits with 1 and a sentence on standard error where the
/// system refuses.
int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    markTrace();
    try {
        orvane::moveWithoutReplacing(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
    } catch (const orvane::FileError& error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.sentence()));
        return 1;
    }
    markTrace();
    return 0;
}
