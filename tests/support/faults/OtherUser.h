// SPDX-License-Identifier: MIT
#ifndef OTHERUSER_H
#define OTHERUSER_H

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

// Permissions stop every user but root. What an action gives as a user whom they stop: in a child of this
// process if it belongs to root, else at once. -1 if there is no such user here, -2 if the child ends in
// another way.
template<typename Action>
int asOtherUser(const Action &action)
{
    constexpr uid_t nobody = 65534;
    constexpr int noUser = 255;
    if (geteuid() != 0)
        return action();
    const pid_t child = fork();
    if (child == 0) {
        const bool isOther = setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0;
        _exit(isOther ? action() : noUser);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -2;
    return WEXITSTATUS(status) == noUser ? -1 : WEXITSTATUS(status);
}

#endif // OTHERUSER_H
