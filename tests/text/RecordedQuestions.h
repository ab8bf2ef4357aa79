// SPDX-License-Identifier: MIT
#ifndef RECORDEDQUESTIONS_H
#define RECORDEDQUESTIONS_H

#include <QCoreApplication>
#include <QPair>
#include <QSet>
#include <QTranslator>

// Installed while it lives: keeps the context and the source of every text that is asked for, and gives the
// answer that it was made with to all of them; without one the texts stay as they are.
class RecordedQuestions : public QTranslator
{
public:
    using Question = QPair<QByteArray, QByteArray>; // context, source

    explicit RecordedQuestions(const QString &answer = QString()) : mAnswer(answer)
    {
        QCoreApplication::installTranslator(this);
    }
    ~RecordedQuestions() override { QCoreApplication::removeTranslator(this); }

    RecordedQuestions(const RecordedQuestions &) = delete;
    RecordedQuestions &operator=(const RecordedQuestions &) = delete;

    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *disambiguation,
                      int n) const override
    {
        Q_UNUSED(disambiguation)
        Q_UNUSED(n)
        mQuestions.insert(Question(context, source));
        return mAnswer;
    }

    QSet<Question> questions() const { return mQuestions; }

private:
    QString mAnswer;
    mutable QSet<Question> mQuestions;
};

#endif // RECORDEDQUESTIONS_H
