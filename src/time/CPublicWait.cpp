// SPDX-License-Identifier: MIT
#include <CPublicWait.h>

void CPublicWait::sleep(unsigned long secs)
{
    QThread::sleep(secs);
}

void CPublicWait::msleep(unsigned long msecs)
{
    QThread::msleep(msecs);
}

void CPublicWait::usleep(unsigned long usecs)
{
    QThread::usleep(usecs);
}
