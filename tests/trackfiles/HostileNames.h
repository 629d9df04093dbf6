#pragma once

#include <QString>
#include <QStringList>

#include <random>

namespace orvane::test {

/// Names that programs have fallen over: each may come as a title.
const QStringList& naughtyNames();

/// A name of up to a dozen pieces: letters of several scripts, marks, controls, halves of characters, and what names of
/// tracks are made of.
QString randomName(std::mt19937& random);

} // namespace orvane::test
