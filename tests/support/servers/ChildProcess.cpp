#include "support/servers/ChildProcess.h"

#include <QFile>

#include <csignal>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::vector<char *> pointers(QList<QByteArray> &texts)
{
    std::vector<char *> result;
    for (QByteArray &text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

QList<QByteArray> encoded(const ChildProcess::Setup &setup)
{
    QList<QByteArray> texts{QFile::encodeName(setup.program)};
    for (const QString &argument : setup.arguments)
        texts.append(QFile::encodeName(argument));
    return texts;
}

QList<QByteArray> environmentWith(const QList<QByteArray> &additions)
{
    QList<QByteArray> texts = additions; // the first of one name counts
    for (char **variable = environ; *variable; ++variable)
        texts.append(*variable);
    return texts;
}

} // namespace

ChildProcess::ChildProcess(const Setup &setup)
{
    QList<QByteArray> argumentTexts = encoded(setup);
    QList<QByteArray> environmentTexts = environmentWith(setup.environment);
    const std::vector<char *> arguments = pointers(argumentTexts);
    const std::vector<char *> environment = pointers(environmentTexts);
    const QByteArray folder = QFile::encodeName(setup.folder);
    const QByteArray outputFile = QFile::encodeName(setup.outputFile);
    const QByteArray errorFile = setup.errorFile.isEmpty() ? outputFile : QFile::encodeName(setup.errorFile);
    int input[2];
    if (pipe2(input, O_CLOEXEC) != 0)
        qFatal("No pipe for %s.", arguments.front());

    m_id = fork();
    if (m_id == 0) { // nothing but bare system calls: other threads may have held locks
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        constexpr int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC;
        const int output = open(outputFile.constData(), flags, 0600);
        const int errors = open(errorFile.constData(), flags, 0600);
        if (dup2(input[0], 0) == 0 && dup2(output, 1) == 1 && dup2(errors, 2) == 2 && chdir(folder.constData()) == 0)
            execve(arguments.front(), arguments.data(), environment.data());
        _exit(127);
    }
    close(input[0]);
    m_input = input[1];
    if (m_id < 0)
        qFatal("%s cannot be started.", arguments.front());
}

ChildProcess::~ChildProcess()
{
    closeInput();
    if (m_id > 0)
        kill(m_id, SIGTERM);
    waitForEnd();
}

void ChildProcess::write(const QByteArray &bytes) const
{
    if (::write(m_input, bytes.constData(), std::size_t(bytes.size())) != bytes.size())
        qFatal("cannot write to a program's input");
}

void ChildProcess::closeInput()
{
    if (m_input >= 0)
        close(m_input);
    m_input = -1;
}

int ChildProcess::waitForEnd()
{
    int status = -1;
    if (m_id <= 0 || waitpid(m_id, &status, 0) != m_id)
        return -1;
    m_id = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
