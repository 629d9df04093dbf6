#pragma once

#include <QString>

namespace orvane {

/// What became of saving one file.
struct DownloadOutcome
{
    enum class Kind
    {
        failed,
        downloaded,
        alreadyExists,
        stopped
    };

    Kind kind = Kind::failed;
    /// Why it failed; empty for the other kinds.
    QString reason;

    bool operator==(const DownloadOutcome&) const = default;

    static DownloadOutcome failed(const QString& reason) { return {Kind::failed, reason}; }

    static DownloadOutcome downloaded() { return {Kind::downloaded, {}}; }

    static DownloadOutcome alreadyExists() { return {Kind::alreadyExists, {}}; }

    static DownloadOutcome stopped() { return {Kind::stopped, {}}; }

    /// The file is on disk, from now or from before.
    bool isOnDisk() const { return kind == Kind::downloaded || kind == Kind::alreadyExists; }
};

} // namespace orvane
