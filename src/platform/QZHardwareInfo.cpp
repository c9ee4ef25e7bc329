#include "platform/QZHardwareInfo.h"

#include <QSysInfo>

QString QZHardwareInfo::CPUType()
{
    return QSysInfo::currentCpuArchitecture();
}

QString QZHardwareInfo::intelName()
{
    return QStringLiteral("x86_64");
}
