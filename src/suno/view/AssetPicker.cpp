#include "suno/view/AssetPicker.h"

#include "main/App/L10n.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/TickBox.h"

#include <QGridLayout>

namespace orvane {
namespace {

constexpr int columns = 2;

L10n::Key labelOf(Asset asset)
{
    switch (asset) {
    case Asset::audio:
        return L10n::Key::audio;
    case Asset::lyrics:
        return L10n::Key::lyrics;
    case Asset::lrc:
        return L10n::Key::timedLyrics;
    case Asset::artwork:
        return L10n::Key::artwork;
    }
    return L10n::Key::audio;
}

} // namespace

AssetPicker::AssetPicker(QWidget* parent)
    : QWidget(parent)
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins({});
    grid->setHorizontalSpacing(Theme::Space::medium);
    grid->setVerticalSpacing(Theme::Space::small);
    for (const Asset asset : allAssets) {
        auto* toggle = new TickBox(L10n::t(labelOf(asset)), this);
        toggle->setObjectName(rawValue(asset));
        toggle->setChecked(true);
        const int position = static_cast<int>(toggles_.size());
        grid->addWidget(toggle, position / columns, position % columns);
        toggles_.insert(asset, toggle);
    }
    for (int column = 0; column < columns; ++column)
        grid->setColumnStretch(column, 1);
}

AssetSet AssetPicker::ticked() const
{
    AssetSet assets;
    for (auto toggle = toggles_.begin(); toggle != toggles_.end(); ++toggle) {
        if (toggle.value()->isChecked())
            assets.insert(toggle.key());
    }
    return assets;
}

} // namespace orvane
