#pragma once

#include "main/Chrome/CardView.h"
#include "mastering/Watermark.h"

#include <QString>

#include <functional>

class QBoxLayout;
class QPushButton;

namespace orvane {

class Dialogs;
class ElidedLabel;
class PopUpButton;
class Preferences;
class Session;
class TickBox;

/// Where the user chooses the tag of their own that is mixed into what a tool writes. Every change is stored at once,
/// under the identifier of the panel.
class WatermarkPanel : public CardView
{
    Q_OBJECT

public:
    /// What the panel works with; all of it outlives the panel.
    struct Services
    {
        const Session& session;
        Preferences& preferences;
        Dialogs& dialogs;
    };

    WatermarkPanel(const QString& id, const QString& explanation, const Services& services, QWidget* parent = nullptr);

    /// What is stored at this moment.
    Master::Watermark watermark() const;
    void setWatermark(const Master::Watermark& watermark);

    /// Shows what is stored; for when another panel may have chosen a file.
    void updateChrome();

    /// Called after every change that the user makes.
    std::function<void()> onChange;

private:
    QBoxLayout* buildFileRow();
    QBoxLayout* buildPickers();
    void fillPickers();
    void connectControls();
    void chooseFile();
    void change(const Master::Watermark& watermark);

    const QString id_;
    const Services services_;
    TickBox* toggle_ = nullptr;
    ElidedLabel* fileLabel_ = nullptr;
    QPushButton* chooseButton_ = nullptr;
    PopUpButton* levelPicker_ = nullptr;
    PopUpButton* placementPicker_ = nullptr;
};

} // namespace orvane
