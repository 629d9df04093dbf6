#pragma once

#include "suno/Asset.h"

#include <QHash>
#include <QWidget>

namespace orvane {

class TickBox;

/// What to save for each track: a box for each asset, in two columns, all ticked at first.
class AssetPicker : public QWidget
{
    Q_OBJECT

public:
    explicit AssetPicker(QWidget* parent = nullptr);

    AssetSet ticked() const;

private:
    QHash<Asset, TickBox*> toggles_;
};

} // namespace orvane
