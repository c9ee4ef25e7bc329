#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A text of a string table in the format of Qt's translation tools.
struct StringTableText
{
    QString table;
    QString key;
    QString translation;
    /// What the tools have noted: "unfinished", "vanished", "obsolete", or nothing.
    QString state;
};

/// All texts of a .ts file, in its order. A file that cannot be read, or that is no table, fails the program.
QList<StringTableText> stringTableTexts(const QString &path);
