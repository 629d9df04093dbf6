#pragma once

#include "tests/automation/AutomationFixture.h"

namespace orvane::test {

/// A run whose folder and choices a test arranges.
class RunFixture : public AutomationFixture
{
protected:
    /// Of the track at that place in the stand-in's library.
    QString title(int position) const;

    /// The run goes over the folder, in which these recordings lie.
    void useFolder(const QStringList& names);
    /// Of the stages after the download, that one is ticked.
    void only(Stage stage);
    /// A tag of the user's own that the run is to mix in.
    void useWatermark();

    void removeFile(const QString& name) const;
    void removeFolder() const;

    /// The text of a tag's frame; empty where there is none.
    std::string tagOf(const QString& name, const char* frame) const;
};

} // namespace orvane::test
