#include "mastering/view/WatermarkPanel.h"

#include "main/App/L10n.h"
#include "main/App/Session.h"
#include "main/Chrome/Dialogs.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/TickBox.h"
#include "mastering/WatermarkSettings.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using L10n::Key;

namespace {

/// In dB against the music, in the picker's order.
constexpr std::array levels{-30, -24, -18, -12, -6};

const QStringList& soundFiles()
{
    static const QStringList extensions{u"wav"_s, u"mp3"_s, u"m4a"_s, u"aif"_s, u"aiff"_s, u"flac"_s, u"caf"_s};
    return extensions;
}

PopUpButton* makePicker(const QString& name, const QString& title, QWidget* parent)
{
    auto* picker = new PopUpButton(parent);
    picker->setObjectName(name);
    picker->setAccessibleName(title);
    return picker;
}

QLabel* makeLabel(const QString& text, QWidget* buddy, QWidget* parent)
{
    QLabel* label = makeNote(text, parent);
    label->setWordWrap(false);
    label->setBuddy(buddy);
    return label;
}

} // namespace

WatermarkPanel::WatermarkPanel(const QString& id, const QString& explanation, const Services& services, QWidget* parent)
    : CardView(parent)
    , id_(id)
    , services_(services)
{
    setAccessibleName(L10n::t(Key::wmSection));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Theme::Space::large, Theme::Space::medium, Theme::Space::large, Theme::Space::large);
    column->setSpacing(Theme::Space::small);
    toggle_ = new TickBox(L10n::t(Key::wmUseTag), this);
    toggle_->setObjectName(u"tagSwitch"_s);
    column->addWidget(makeHeading(L10n::t(Key::wmSection), this));
    column->addWidget(toggle_);
    column->addLayout(buildFileRow());
    column->addLayout(buildPickers());
    column->addWidget(makeNote(explanation, this));
    fillPickers();
    connectControls();
    updateChrome();
}

QBoxLayout* WatermarkPanel::buildFileRow()
{
    fileLabel_ = new ElidedLabel({}, this);
    fileLabel_->setObjectName(u"tagFile"_s);
    chooseButton_ = new QPushButton(L10n::t(Key::choose), this);
    chooseButton_->setObjectName(u"chooseTag"_s);

    auto* row = new QHBoxLayout;
    row->setSpacing(Theme::Space::medium);
    row->addWidget(fileLabel_, 1);
    row->addWidget(chooseButton_);
    return row;
}

QBoxLayout* WatermarkPanel::buildPickers()
{
    levelPicker_ = makePicker(u"tagLevel"_s, L10n::t(Key::wmLevel), this);
    placementPicker_ = makePicker(u"tagPlacement"_s, L10n::t(Key::wmPlace), this);

    auto* rows = new QGridLayout;
    rows->setHorizontalSpacing(Theme::Space::medium);
    rows->setVerticalSpacing(Theme::Space::small);
    rows->setColumnStretch(1, 1);
    rows->addWidget(makeLabel(L10n::t(Key::wmLevel), levelPicker_, this), 0, 0);
    rows->addWidget(levelPicker_, 0, 1);
    rows->addWidget(makeLabel(L10n::t(Key::wmPlace), placementPicker_, this), 1, 0);
    rows->addWidget(placementPicker_, 1, 1);

    auto* around = new QVBoxLayout;
    around->addLayout(rows);
    return around;
}

void WatermarkPanel::fillPickers()
{
    for (const int level : levels)
        levelPicker_->addItem(L10n::t(Key::wmUnderMusic, {-level}), level);
    for (const auto& choice : WatermarkSettings::placements())
        placementPicker_->addItem(choice.text, choice.tag);
}

void WatermarkPanel::connectControls()
{
    connect(toggle_, &TickBox::clicked, this, [this](bool isOn) {
        Master::Watermark changed = watermark();
        changed.isOn = isOn;
        change(changed);
    });
    connect(chooseButton_, &QPushButton::clicked, this, &WatermarkPanel::chooseFile);
    connect(levelPicker_, &PopUpButton::activated, this, [this](int row) {
        Master::Watermark changed = watermark();
        changed.level = levelPicker_->itemData(row).toInt();
        change(changed);
    });
    connect(placementPicker_, &PopUpButton::activated, this, [this](int row) {
        Master::Watermark changed = watermark();
        changed.placement = WatermarkSettings::placement(placementPicker_->itemData(row).toInt());
        change(changed);
    });
}

Master::Watermark WatermarkPanel::watermark() const
{
    return WatermarkSettings::stored(services_.preferences, id_);
}

void WatermarkPanel::setWatermark(const Master::Watermark& watermark)
{
    WatermarkSettings::store(services_.preferences, id_, watermark);
    updateChrome();
}

void WatermarkPanel::updateChrome()
{
    const Master::Watermark current = watermark();
    toggle_->setChecked(current.isOn);
    fileLabel_->setText(current.file ? QFileInfo(*current.file).fileName() : L10n::t(Key::wmNoTag));
    levelPicker_->setCurrentIndex(levelPicker_->findData(static_cast<int>(current.level)));
    placementPicker_->setCurrentIndex(placementPicker_->findData(WatermarkSettings::tag(current.placement)));
    levelPicker_->setEnabled(current.file.has_value());
    placementPicker_->setEnabled(current.file.has_value());
}

void WatermarkPanel::chooseFile()
{
    const auto file = services_.dialogs.chooseFile(this, services_.session.destination(), soundFiles());
    if (!file)
        return;
    Master::Watermark changed = watermark();
    changed.file = file->toLocalFile();
    changed.isOn = true;
    change(changed);
}

void WatermarkPanel::change(const Master::Watermark& watermark)
{
    setWatermark(watermark);
    if (onChange)
        onChange();
}

} // namespace orvane
