#pragma once

#include "platform/JSONText.h"

#include <QByteArray>
#include <QStringView>
#include <QVariant>

#include <functional>
#include <limits>

/// Writes values in JSON's notation. What JSON has no notation for is asked of `writeOther`.
class JSONWriter
{
public:
    struct Format
    {
        JSONStyle style = JSONStyle::Compact;
        /// Stands after commas and colons on one line.
        QByteArray separator;
        std::function<QByteArray(const QVariant &)> writeOther;
        /// Behind so many bytes the writer leaves out the rest: what is only references in memory may be endless text.
        qsizetype longestText = std::numeric_limits<qsizetype>::max();
    };

    explicit JSONWriter(Format format);

    void write(const QVariant &value);
    QByteArray take() { return std::move(m_output); }

private:
    template <class Dictionary>
    void writeMembers(const Dictionary &dictionary);
    template <class List>
    void writeElements(const List &list);
    void writeMember(const QString &key, const QVariant &value, bool isFirst);
    void writeString(QStringView text);
    void writeEscape(QChar character);
    void appendUTF8(QStringView text);
    void writeDouble(double number);
    bool writeScalar(const QVariant &value);
    void beginItem(bool isFirst);
    void close(char bracket, bool isEmpty);
    void startLine();
    bool isFull() const { return m_output.size() > m_format.longestText; }

    Format m_format;
    QByteArray m_output;
    int m_depth = 0;
};
