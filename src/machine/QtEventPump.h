#pragma once

#include "machine/EventPump.h"

#include <QElapsedTimer>

/// The event pump of the running QCoreApplication. A wait costs no processor time and ends within a
/// few milliseconds of its due time.
class QtEventPump : public EventPump {
public:
    QtEventPump();
    [[nodiscard]] double now() const override;
    void runQueued() override;
    void runEvents(std::optional<double> deadline) override;

private:
    QElapsedTimer clock;
};
