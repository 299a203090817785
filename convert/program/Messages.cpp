#include "convert/program/Messages.h"

#include <cstdio>

void printError(const QString& text)
{
    std::fputs(QStringLiteral("kytconvert: %1\n").arg(text).toUtf8().constData(), stderr);
}
