#pragma once

#include <QWidget>

namespace orvane {

/// What lies over a pane whose page stopped working: one calm sentence and a button.
class PageOverlay : public QWidget
{
    Q_OBJECT

public:
    PageOverlay(const QString& sentence, const QString& button, QWidget* parent);

Q_SIGNALS:
    void reloadRequested();
};

} // namespace orvane
