#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

class QWidget;

namespace orvane {

/// A question with two buttons; the first is the default one.
struct Question
{
    QString text;
    QString informativeText;
    QString firstButton;
    QString secondButton;
};

/// Alerts and panels, so that whoever asks does not know who answers. All of them block until they are answered.
class Dialogs
{
public:
    virtual ~Dialogs() = default;

    /// True for the first button; false for the second and for closing the alert.
    virtual bool ask(QWidget* over, const Question& question) = 0;

    /// An alert with one OK button.
    virtual void tell(QWidget* over, const QString& text, const QString& informativeText) = 0;

    /// A panel that picks a folder or makes a new one; absent when it was closed.
    virtual std::optional<QUrl> chooseFolder(QWidget* over, const QUrl& startingAt) = 0;

    /// A panel that picks a file with one of the extensions, written without a dot; absent when it was closed.
    virtual std::optional<QUrl> chooseFile(QWidget* over, const QUrl& startingAt, const QStringList& extensions) = 0;
};

/// The real ones, on QMessageBox and QFileDialog.
class SystemDialogs final : public Dialogs
{
public:
    bool ask(QWidget* over, const Question& question) override;
    void tell(QWidget* over, const QString& text, const QString& informativeText) override;
    std::optional<QUrl> chooseFolder(QWidget* over, const QUrl& startingAt) override;
    std::optional<QUrl> chooseFile(QWidget* over, const QUrl& startingAt, const QStringList& extensions) override;
};

} // namespace orvane
