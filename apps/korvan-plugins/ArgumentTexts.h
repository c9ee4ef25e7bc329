#pragma once

#include <CLI/CLI.hpp>

#include <QString>
#include <QStringList>

#include <optional>
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

/// Nil where the option is not there.
inline std::optional<QString> textIfGiven(const CLI::App &app, const std::string &option, const std::string &argument)
{
    return app.count(option) > 0 ? std::optional(text(argument)) : std::nullopt;
}
