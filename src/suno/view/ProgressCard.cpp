#include "suno/view/ProgressCard.h"

#include "main/App/L10n.h"
#include "main/Chrome/Badge.h"
#include "main/Chrome/LogView.h"
#include "main/Chrome/ProgressCaption.h"
#include "main/Chrome/ProgressLine.h"
#include "suno/LibraryExport.h"
#include "suno/TimeLeft.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int leastLogHeight = 96;

QColor colourOf(LogLevel level)
{
    switch (level) {
    case LogLevel::error:
        return Theme::bad;
    case LogLevel::success:
        return Theme::ok;
    case LogLevel::info:
        break;
    }
    return Theme::textSecond;
}

double fraction(const ExportProgress& progress)
{
    return progress.count > 0 ? static_cast<double>(progress.done) / progress.count : 0;
}

} // namespace

ProgressCard::ProgressCard(QWidget* parent)
    : CardView(parent)
{
    setAccessibleName(L10n::t(L10n::Key::progress));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Theme::Space::large, Theme::Space::medium, Theme::Space::large, Theme::Space::large);
    column->setSpacing(Theme::Space::small);
    buildBar();
    buildLog();
    column->addLayout(buildHead());
    column->addWidget(progress_);
    caption_ = new ProgressCaption(this);
    column->addWidget(caption_);
    column->addWidget(logView_, 1);
    setRunning(false);
    caption_->tell(u"0 of 0 tracks"_s);
}

QBoxLayout* ProgressCard::buildHead()
{
    awakeMark_ = new Badge(this);
    awakeMark_->setObjectName(u"awakeMark"_s);
    awakeMark_->setBadge(u"AWAKE"_s, Theme::textMuted);
    awakeMark_->setToolTip(u"This computer stays awake until the export has ended."_s);
    awakeMark_->hide();
    stateBadge_ = new Badge(this);
    stateBadge_->setObjectName(u"stateBadge"_s);

    auto* row = new QHBoxLayout;
    row->addWidget(makeHeading(L10n::t(L10n::Key::progress), this), 1);
    row->addWidget(awakeMark_);
    row->addWidget(stateBadge_);
    return row;
}

void ProgressCard::buildBar()
{
    progress_ = new ProgressLine(this);
    progress_->setObjectName(u"progress"_s);
    progress_->setAccessibleName(L10n::t(L10n::Key::progress));
}

void ProgressCard::buildLog()
{
    logView_ = new LogView(this);
    logView_->setObjectName(u"logView"_s);
    logView_->setAccessibleName(L10n::t(L10n::Key::progress));
    logView_->setMinimumHeight(leastLogHeight);
}

void ProgressCard::setRunning(bool running)
{
    if (running)
        progress_->setValue(0);
    caption_->clear();
    stateBadge_->setBadge(L10n::t(running ? L10n::Key::running : L10n::Key::idle),
                          running ? Theme::accent : Theme::textMuted);
}

void ProgressCard::setAwake(bool awake)
{
    awakeMark_->setVisible(awake);
}

void ProgressCard::show(const ExportProgress& progress)
{
    progress_->setValue(fraction(progress));
    if (progress.done == progress.count)
        return;
    const QString text = u"%1 of %2 tracks — %3"_s.arg(QString::number(progress.done + 1),
                                                       QString::number(progress.count), progress.base);
    caption_->tell(text, progress.timeLeft ? timeLeftText(*progress.timeLeft) : QString());
}

void ProgressCard::log(const QTime& time, const QString& message, LogLevel level)
{
    logView_->append({.time = time, .message = message, .colour = colourOf(level)});
}

} // namespace orvane
