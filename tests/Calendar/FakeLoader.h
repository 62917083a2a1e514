#pragma once

#include "Calendar/CalendarLoader.h"

#include <QCoreApplication>

namespace mivora {

/// A loader that says what the test has it say.
class FakeLoader final : public CalendarLoader
{
public:
    void start(const EventWindow &window, Deliver deliver) override
    {
        windows.push_back(window);
        m_deliver = std::move(deliver);
    }

    void setWindow(const EventWindow &window) override { windows.push_back(window); }

    void tell(StoreUpdate update)
    {
        m_deliver(std::move(update));
        QCoreApplication::processEvents();
    }

    std::vector<EventWindow> windows;

private:
    Deliver m_deliver;
};

} // namespace mivora
