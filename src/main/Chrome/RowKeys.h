#pragma once

#include <QObject>

#include <functional>

class QKeyEvent;
class QWidget;

namespace orvane {

/// Leads through a row of things by the keyboard: an arrow to the neighbour, in the direction in which the row is laid
/// out and no further than its ends; Home and End to these. A key with a modifier is somebody else's.
class RowKeys : public QObject
{
    Q_OBJECT

public:
    /// Of `count` things the one at `current`, from 0, is where the keyboard is.
    struct Place
    {
        int current = 0;
        int count = 0;
    };

    /// Hears the keys that come to `row`. `go` is called with the index that a key leads to, also where it is the
    /// present one.
    RowKeys(QWidget& row, std::function<Place()> place, std::function<void(int index)> go);

    /// Hears those of one of the things too. A scroll area between it and the row would take the arrows for itself.
    void watch(QWidget& thing);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int indexFor(const QKeyEvent& key) const;

    QWidget& row_;
    std::function<Place()> place_;
    std::function<void(int index)> go_;
};

} // namespace orvane
