#include "ListenPlace.h"

QHostAddress ListenAddress(const std::string& host)
{
    return host.empty() ? QHostAddress(QHostAddress::Any)
                        : QHostAddress(QString::fromStdString(host));
}
