#pragma once

#include "QtWindowHandle.h"
#include "host/Messages.h"

#include <QEvent>

#include <cstdint>
#include <memory>

// A numbered message between the module's windows and its host, delivered as
// an event whose type is the message number. Receivers tell it from Qt's own
// events by its class (From), since a few message numbers lie in Qt's range.
class MessageEvent : public QEvent {
public:
    // A posted event owns what lParam points to (a test value's components);
    // a sent one leaves it to the sender.
    enum Delivery { kSent, kPosted };
    MessageEvent(unsigned message, std::intptr_t wParam, std::intptr_t lParam, Delivery delivery);
    ~MessageEvent() override;

    // The message event that event is, or null.
    static MessageEvent* From(QEvent* event);

    unsigned Message() const { return static_cast<unsigned>(type()); }
    std::intptr_t wParam;
    std::intptr_t lParam;
    std::intptr_t result = 0;  // the receiver's answer to a sent message

    // A posted test value's address components, which now belong to the
    // caller. A posted event whose components nobody takes frees them, so a
    // value posted to a window that goes away leaks nothing.
    std::unique_ptr<AddressComponents> TakeComponents();

private:
    Delivery delivery_;
};
