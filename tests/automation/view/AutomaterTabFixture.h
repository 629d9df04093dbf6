#pragma once

#include "automation/view/ChainView.h"
#include "demonstration/service/StandInService.h"
#include "main/Chrome/LogView.h"
#include "tests/automation/view/AutomaterWorld.h"

#include <QSet>

#include <functional>
#include <gmock/gmock.h>

namespace orvane::test {

/// An Automater tab on a stand-in library of three short tracks, signed in.
class AutomaterTabFixture : public testing::Test, public AutomaterWorld
{
protected:
    AutomaterTabFixture();

    /// Runs the event loop until `condition` holds; false after a minute.
    bool waitUntil(const std::function<bool()>& condition) const;
    bool waitForIdle() const;
    /// Starts a run and waits for its end.
    void runToTheEnd();
    /// Starts a run whose first page never comes.
    void startAndHold();
    void pickSource(RunSource source);

    AutomaterRun& run() const { return tab->automater().run(); }

    ModuleCard* card(Stage stage) const { return part<ChainView>()->cards().at(indexOf(stage)); }

    /// The log's lines without their times.
    QStringList lines() const;
    QStringList files(const QString& below = {}) const;
    void write(const QString& name) const;

private:
    explicit AutomaterTabFixture(std::unique_ptr<demo::StandInService> made);

protected:
    std::unique_ptr<demo::StandInService> service;
};

} // namespace orvane::test
