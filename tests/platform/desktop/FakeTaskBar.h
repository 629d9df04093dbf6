#pragma once

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <ostream>

namespace orvane::test {

/// A task bar on the test's own bus: it writes down what programs tell of their progress.
class FakeTaskBar : public QObject
{
    Q_OBJECT

public:
    struct Update
    {
        QString program;
        double progress = 0.0;
        bool isVisible = false;

        bool operator==(const Update&) const = default;
    };

    FakeTaskBar();
    ~FakeTaskBar() override;

    /// All that was told, once everything that was sent has come.
    QList<Update> told();

public Q_SLOTS:
    void update(const QString& program, const QVariantMap& properties);

private:
    QDBusConnection bus_;
    QList<Update> updates_;
};

void PrintTo(const FakeTaskBar::Update& update, std::ostream* out);

} // namespace orvane::test
