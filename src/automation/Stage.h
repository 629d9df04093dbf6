#pragma once

#include <QString>

#include <array>

namespace orvane {

/// The six stages of a run, in their fixed order.
enum class Stage
{
    read,
    download,
    rename,
    tag,
    master,
    video
};

inline constexpr std::array stageOrder{Stage::read, Stage::download, Stage::rename,
                                       Stage::tag,  Stage::master,   Stage::video};

inline constexpr int stageCount = static_cast<int>(stageOrder.size());

/// Position in the order, from 0.
inline constexpr int indexOf(Stage stage)
{
    return static_cast<int>(stage);
}

/// The name that is shown and that identifies the stage, in English in every language.
QString nameOf(Stage stage);

/// Whether the user may leave the stage out.
bool isOptional(Stage stage);

/// What a stage has come to, with a short lower-case note where it has ended.
struct StageState
{
    enum class Kind
    {
        done,
        failed,
        skipped,
        waiting,
        running
    };

    Kind kind = Kind::waiting;
    /// Empty for `waiting` and `running`.
    QString note;

    bool operator==(const StageState&) const = default;

    static StageState done(const QString& note) { return {Kind::done, note}; }

    static StageState failed(const QString& note) { return {Kind::failed, note}; }

    static StageState skipped(const QString& note) { return {Kind::skipped, note}; }

    static StageState waiting() { return {Kind::waiting, {}}; }

    static StageState running() { return {Kind::running, {}}; }
};

/// "name — note", with "running…" and "waiting" as the notes of those two.
QString captionOf(Stage stage, const StageState& state);

/// How far along the row of stages a run is when `stage` comes to `state`, from 0 to 1.
double stepsProgress(Stage stage, const StageState& state);

} // namespace orvane
