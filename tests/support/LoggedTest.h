// SPDX-License-Identifier: MIT
#ifndef LOGGEDTEST_H
#define LOGGEDTEST_H

#include <QObject>
#include <QStringList>

// Base of every test class. It records each line that reaches Qt's message handler while a test function
// runs; a function that expects lines takes them with takeLog() and compares them, and a line that nobody
// took fails the function. A missing line and an additional one are thus both seen.
//
// A test class has no init() and cleanup() slots of its own; it overrides prepare() and tidy() instead.
class LoggedTest : public QObject
{
    Q_OBJECT

public:
    LoggedTest() = default;

    // The lines recorded since the test function began or since the last call, oldest first. A warning of the
    // category "default" stands as its bare text, any other line behind "[type category] ".
    static QStringList takeLog();

protected:
    virtual void prepare() {}
    virtual void tidy() {}

private Q_SLOTS:
    void init();
    void cleanup();
};

#endif // LOGGEDTEST_H
