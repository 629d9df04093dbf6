#pragma once

class QWidget;

namespace orvane::test {

/// Every control in every state, in a column as wide as the tools', laid out for the application's present direction.
/// The caller owns it.
QWidget* makeGallery();

} // namespace orvane::test
