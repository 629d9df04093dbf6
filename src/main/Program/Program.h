#pragma once

#include <QApplication>
#include <QString>

#include <chrono>
#include <optional>

namespace orvane {

class SoleInstance;

/// Settings that must stand before the application object exists.
void prepareApplication();

/// What every program does with its new application object, before any view exists: language, reading direction, look.
/// The preferences must be known to `L10n` by then.
void dressApplication(QApplication& application);

/// How a start ends that finds the program running.
struct Farewell
{
    /// One sentence for the person who started it.
    QString sentence;
    /// The window that is there has not come forward, so that the sentence is all there is to see.
    bool isUnanswered = false;

    bool operator==(const Farewell&) const = default;
};

/// Takes its standing for this start, and calls the window of the first forward. Absent for the first, which goes on.
/// Blocks for at most `patience` while the one that runs does not answer.
std::optional<Farewell> farewellUnlessFirst(SoleInstance& instance,
                                            std::chrono::milliseconds patience = std::chrono::seconds(10));

/// Says it on standard error, and in an alert where no window shows that the program is there. Gives the exit code.
int sayFarewell(QApplication& application, const Farewell& farewell);

} // namespace orvane
