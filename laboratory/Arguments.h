#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvane::lab {

/// A verb's command line, taken apart: "--name value" pairs, and what stands alone.
class Arguments
{
public:
    /// `known` are the names of the options, without dashes, and `flags` those of the options that stand without a
    /// value. Throws UsageError for any other, or one whose value is missing.
    Arguments(const QStringList& arguments, const QStringList& known, const QStringList& flags = {});

    /// What stands alone, where there are `least` to `most` of it; else throws UsageError.
    const QStringList& alone(qsizetype least, qsizetype most) const;

    bool has(const QString& flag) const { return options_.contains(flag); }

    std::optional<QString> text(const QString& option) const;
    /// Throws UsageError for what is no number.
    std::optional<double> number(const QString& option) const;
    /// Throws UsageError for what is no whole number.
    std::optional<int> integer(const QString& option) const;
    /// Throws UsageError where the option is missing.
    double requiredNumber(const QString& option) const;
    QString requiredText(const QString& option) const;

private:
    QStringList alone_;
    QHash<QString, QString> options_;
};

/// The path as an absolute one, as the logic takes it.
QString absolute(const QString& path);

} // namespace orvane::lab
