#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtEndian>

/// Numbers of an archive, one after the other. What is behind the end reads as zero and makes isOk() false.
class ZipNumbers
{
public:
    explicit ZipNumbers(QByteArrayView bytes)
        : m_bytes(bytes)
    { }

    template <class Number>
    Number next()
    {
        const auto bytes = take(sizeof(Number));
        return bytes.size() == sizeof(Number) ? qFromLittleEndian<Number>(bytes.data()) : Number(0);
    }
    QByteArrayView take(qsizetype size)
    {
        m_isOk = m_isOk && size <= m_bytes.size();
        const auto taken = m_isOk ? m_bytes.first(size) : QByteArrayView();
        m_bytes = m_bytes.sliced(taken.size());
        return taken;
    }
    void skip(qsizetype size) { take(size); }

    bool isOk() const { return m_isOk; }
    bool isAtEnd() const { return m_bytes.isEmpty(); }

private:
    QByteArrayView m_bytes;
    bool m_isOk = true;
};

/// Up to `size` bytes of a file, fewer at its end or when it cannot be read.
QByteArray readZipBytes(int file, quint64 offset, quint64 size);
