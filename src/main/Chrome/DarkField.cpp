#include "main/Chrome/DarkField.h"

#include "main/Chrome/Theme.h"

namespace orvane {
namespace {

constexpr QSize usualPadding{6, 3};

} // namespace

DarkField::DarkField(QWidget* parent)
    : QLineEdit(parent)
{
    setFont(Theme::font(12));
    setPadding(usualPadding);
}

DarkField* DarkField::make(const QString& placeholder, QWidget* parent)
{
    auto* field = new DarkField(parent);
    field->setPlaceholderText(placeholder);
    field->setAccessibleName(placeholder);
    return field;
}

void DarkField::setPadding(const QSize& padding)
{
    padding_ = padding;
    setTextMargins(padding.width(), padding.height(), padding.width(), padding.height());
}

} // namespace orvane
