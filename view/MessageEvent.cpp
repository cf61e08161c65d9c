#include "MessageEvent.h"

#include <utility>

MessageEvent::MessageEvent(unsigned message, std::intptr_t wParam, std::intptr_t lParam,
                           Delivery delivery)
    : QEvent(static_cast<QEvent::Type>(message)),
      wParam(wParam),
      lParam(lParam),
      delivery_(delivery)
{
}

MessageEvent::~MessageEvent()
{
    TakeComponents();
}

MessageEvent* MessageEvent::From(QEvent* event)
{
    return dynamic_cast<MessageEvent*>(event);
}

std::unique_ptr<AddressComponents> MessageEvent::TakeComponents()
{
    if (delivery_ != kPosted || Message() != WM_OSC_TESTVALUE || lParam == 0)
        return nullptr;
    return std::unique_ptr<AddressComponents>(
        reinterpret_cast<AddressComponents*>(std::exchange(lParam, 0)));
}
