#include "platform/filesystem/AtomicFile.h"
#include "tests/support/TraceMark.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

using namespace Qt::Literals::StringLiterals;
using orvane::test::markTrace;

void writeInPieces(const QString& path, const QByteArray& piece)
{
    markTrace();
    orvane::AtomicFile file(path, orvane::temporarySibling(path));
    for (int count = 0; count < 3; ++count)
        file.write(piece);
    file.commit();
}

void install(const QString& path, const QByteArray& piece)
{
    const QString staged = orvane::temporarySibling(path);
    std::ofstream stream(staged.toStdString());
    for (int count = 0; count < 3; ++count)
        stream << piece.constData();
    stream.close();
    markTrace();
    orvane::installStaged(staged, path);
}

} // namespace

/// atomic_file_writer write|install PATH LETTER: writes 300,000 times the letter to the path. Exits with 1 and a
/// sentence on standard error where the system refuses.
int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    const QString path = QString::fromLocal8Bit(argv[2]);
    const QByteArray piece(100'000, argv[3][0]);
    try {
        const bool whole = argv[1] == std::string_view("write");
        whole ? writeInPieces(path, piece) : install(path, piece);
    } catch (const orvane::FileError& error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.sentence()));
        return 1;
    }
    markTrace();
    return 0;
}
