#pragma once

#include "mastering/arithmetic/Chain.h"
#include "mastering/arithmetic/Reading.h"

#include <QJsonObject>

namespace orvane::lab {

/// A number; null for what is not finite.
QJsonValue toJson(double value);
QJsonObject toJson(const Master::Reading& reading);
QJsonObject toJson(const Master::Result& result);

} // namespace orvane::lab
