#include "tests/support/Sandbox.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <random>
#include <string_view>

namespace orvane::test {
namespace {

std::optional<unsigned> givenSeed;
std::optional<unsigned> givenRounds;

/// Takes the option with its number out of the arguments.
std::optional<unsigned> takeNumber(std::string_view option, int& argc, char** argv)
{
    for (int index = 1; index < argc; ++index) {
        const std::string_view argument = argv[index];
        if (!argument.starts_with(option))
            continue;
        const auto number = static_cast<unsigned>(std::strtoul(argv[index] + option.size(), nullptr, 10));
        for (int rest = index; rest + 1 < argc; ++rest)
            argv[rest] = argv[rest + 1];
        --argc;
        return number;
    }
    return std::nullopt;
}

} // namespace

Sandbox::Sandbox()
{
    const QString root = home_.path();
    qputenv("HOME", QFile::encodeName(root));
    const std::pair<const char*, const char*> folders[] = {
        {"XDG_CONFIG_HOME", "/.config"}, {"XDG_DATA_HOME", "/.local/share"}, {"XDG_CACHE_HOME", "/.cache"}};
    for (const auto& [variable, folder] : folders) {
        const QString path = root + QLatin1StringView(folder);
        QDir().mkpath(path);
        qputenv(variable, QFile::encodeName(path));
    }
    QFile runtime(root + QLatin1StringView("/runtime"));
    QDir().mkpath(runtime.fileName());
    runtime.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.fileName()));
    QDir().mkpath(root + QLatin1StringView("/Downloads"));
}

void readSeed(int& argc, char** argv)
{
    givenSeed = takeNumber("--seed=", argc, argv);
    givenRounds = takeNumber("--rounds=", argc, argv);
}

int rounds(int usual)
{
    return givenRounds ? static_cast<int>(*givenRounds) : usual;
}

unsigned seed()
{
    static const unsigned value = [] {
        const unsigned chosen = givenSeed ? *givenSeed : std::random_device{}();
        std::printf("random seed: --seed=%u\n", chosen);
        return chosen;
    }();
    return value;
}

} // namespace orvane::test
