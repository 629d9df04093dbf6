#include "demonstration/service/SignIn.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

namespace orvane::demo::SignIn {
namespace {

QByteArray sealOf(const QByteArray& name)
{
    return QCryptographicHash::hash("stand-in visitor " + name, QCryptographicHash::Sha256).toHex().first(24);
}

} // namespace

QByteArray freshVisitor()
{
    const QByteArray name = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    return name + '.' + sealOf(name);
}

bool isVisitor(const QByteArray& value)
{
    const qsizetype dot = value.indexOf('.');
    return dot > 0 && value.sliced(dot + 1) == sealOf(value.first(dot));
}

} // namespace orvane::demo::SignIn
