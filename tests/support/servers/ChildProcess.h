#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <sys/types.h>

/// A program that ends with this object at the latest, also when the test crashes.
///
/// Not QProcess, whose child shares the parent's memory for a moment: ThreadSanitizer then takes the parent for the
/// child, which may not start threads. What cannot be done ends the test program with a message.
class ChildProcess
{
public:
    struct Setup
    {
        QString program;
        QStringList arguments;
        /// Where it runs.
        QString folder;
        /// The file that takes what it writes, errors too.
        QString outputFile;
        /// "NAME=value", besides what this program has.
        QList<QByteArray> environment;
        /// The file that takes the errors alone, where one is named.
        QString errorFile = {};
    };

    explicit ChildProcess(const Setup &setup);
    /// Asks it to end, and waits.
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    /// Its standard input comes to its end.
    void closeInput();
    /// Writes to its standard input, which must not be closed yet; as much as a pipe holds.
    void write(const QByteArray &bytes) const;
    /// Its exit status; -1 when a signal has ended it.
    int waitForEnd();

private:
    pid_t m_id = -1;
    int m_input = -1;
};
