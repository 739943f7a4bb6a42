#include "tests/results/ChildProcess.h"

#include <QFile>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace testsupport {

namespace {

int statusOf(int ended)
{
    return WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
}

} // namespace

bool ChildProcess::start(const QStringList &words, const QString &output)
{
    QList<QByteArray> encoded;
    for (const QString &word : words)
        encoded.append(QFile::encodeName(word));
    std::vector<char *> arguments;
    for (QByteArray &word : encoded)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, QFile::encodeName(output).constData(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0666);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    const int failed = ::posix_spawnp(&m_id, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0)
        m_id = 0;
    return failed == 0;
}

bool ChildProcess::isRunning()
{
    int ended = 0;
    if (m_id != 0 && ::waitpid(m_id, &ended, WNOHANG) == m_id) {
        m_status = statusOf(ended);
        m_id = 0;
    }
    return m_id != 0;
}

int ChildProcess::wait()
{
    int ended = 0;
    if (m_id != 0 && ::waitpid(m_id, &ended, 0) == m_id) {
        m_status = statusOf(ended);
        m_id = 0;
    }
    return m_status;
}

void ChildProcess::signal(int number) const
{
    if (m_id != 0)
        ::kill(m_id, number);
}

} // namespace testsupport
