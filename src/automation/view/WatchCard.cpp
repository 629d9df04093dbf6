#include "automation/view/WatchCard.h"

#include "main/App/L10n.h"
#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/TickBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <array>
#include <chrono>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using L10n::Key;

namespace {

struct Interval
{
    const char16_t* title;
    int minutes;
};

constexpr std::array intervals{Interval{u"15 minutes", 15}, Interval{u"30 minutes", 30}, Interval{u"1h", 60},
                               Interval{u"3h", 180}};

constexpr auto betweenLooks = 20s;

} // namespace

WatchCard::WatchCard(QWidget* parent)
    : CardView(parent)
{
    setAccessibleName(L10n::t(Key::keepCurrent));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Theme::Space::large, Theme::Space::medium, Theme::Space::large, Theme::Space::large);
    column->setSpacing(Theme::Space::small);
    watchToggle_ = new TickBox(L10n::t(Key::watchLibrary), this);
    watchToggle_->setObjectName(u"watchToggle"_s);
    connect(watchToggle_, &TickBox::clicked, this, &WatchCard::changed);
    watchStatus_ = makeNote({}, this);
    watchStatus_->setObjectName(u"watchStatus"_s);
    column->addWidget(makeHeading(L10n::t(Key::keepCurrent), this));
    column->addWidget(watchToggle_);
    column->addLayout(buildInterval());
    column->addWidget(watchStatus_);
    connect(&beat_, &QTimer::timeout, this, &WatchCard::updateStatus);
}

QBoxLayout* WatchCard::buildInterval()
{
    watchInterval_ = new PopUpButton(this);
    watchInterval_->setObjectName(u"watchInterval"_s);
    watchInterval_->setAccessibleName(L10n::t(Key::checkEvery));
    for (const Interval& interval : intervals)
        watchInterval_->addItem(QString::fromUtf16(interval.title), interval.minutes);
    connect(watchInterval_, &PopUpButton::activated, this, &WatchCard::changed);
    QLabel* label = makeNote(L10n::t(Key::checkEvery), this);
    label->setBuddy(watchInterval_);
    label->setWordWrap(false);

    auto* row = new QHBoxLayout;
    row->setSpacing(Theme::Space::medium);
    row->addWidget(label);
    row->addWidget(watchInterval_, 1);
    return row;
}

bool WatchCard::isOn() const
{
    return watchToggle_->isChecked();
}

int WatchCard::interval(int otherwise) const
{
    return watchInterval_->currentIndex() < 0 ? otherwise : watchInterval_->currentData().toInt();
}

void WatchCard::setSettings(bool isOn, int minutes)
{
    watchToggle_->setChecked(isOn);
    watchInterval_->setCurrentIndex(watchInterval_->findData(minutes));
}

void WatchCard::updateStatus()
{
    if (statusProvider)
        watchStatus_->setText(breakable(statusProvider()));
}

void WatchCard::changed()
{
    if (onChange)
        onChange();
}

void WatchCard::showEvent(QShowEvent* event)
{
    CardView::showEvent(event);
    updateStatus();
    beat_.start(betweenLooks);
}

void WatchCard::hideEvent(QHideEvent* event)
{
    CardView::hideEvent(event);
    beat_.stop();
}

} // namespace orvane
