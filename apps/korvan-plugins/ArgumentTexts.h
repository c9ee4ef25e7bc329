#pragma once

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

// The arguments of the command line as texts.

inline QString text(const std::string &argument)
{
    return QString::fromLocal8Bit(argument.c_str());
}

inline QStringList texts(const std::vector<std::string> &arguments)
{
    QStringList list;
    for (const auto &argument : arguments)
        list.append(text(argument));
    return list;
}
