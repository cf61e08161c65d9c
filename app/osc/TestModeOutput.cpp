#include "TestModeOutput.h"

#include "OscMonitor.h"
#include "OscSender.h"
#include "document/ControlTables.h"

#include <QTime>

#include <string_view>

std::optional<std::int32_t> ValueToSend(const OperatedControl& control)
{
    using Phase = OperatedControl::Phase;
    switch (control.type) {
        case kLabel:
            return std::nullopt;
        case kToggle:
            if (control.phase != Phase::kPressed)
                return std::nullopt;
            return control.value;
        case kPushButton:
            if (control.phase == Phase::kPressed)
                return control.maxValue;
            if (control.phase == Phase::kDragged)
                return std::nullopt;
            return control.minValue;
        default:
            // A release away from a fader leaves the value its last move sent.
            if (control.phase == Phase::kReleasedAway)
                return std::nullopt;
            return control.value;
    }
}

std::optional<std::string> UnsendableAddress(const char* command)
{
    const std::string_view address = command != nullptr ? command : "";
    if (address.empty())
        return "its OSC address is empty";
    if (address.front() != '/')
        return "its OSC address \u201c" + std::string(address) +
               "\u201d does not start with \u201c/\u201d";
    return std::nullopt;
}

void SendOperated(const OperatedControl& control, OscSender& sender, OscMonitor& monitor)
{
    const std::optional<std::int32_t> value = ValueToSend(control);
    if (!value)
        return;
    const QTime now = QTime::currentTime();
    if (const std::optional<std::string> fault = UnsendableAddress(control.command)) {
        // Said once for each press, not for every move of it.
        if (control.phase == OperatedControl::kPressed)
            monitor.AddError(QString::fromUtf8(control.name) + QStringLiteral(" sends nothing: ") +
                                 QString::fromStdString(*fault) + QLatin1Char('.'),
                             now);
        return;
    }
    std::string error;
    if (sender.Send(control.command, *value, error))
        monitor.AddSent(QString::fromUtf8(control.command), *value, now);
    else
        monitor.AddError(QString::fromStdString(error), now);
}
