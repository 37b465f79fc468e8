#pragma once

#include "kivmessageboxform.h"

#include <QStringList>

/// Answers message boxes in place of a user as long as it lives, and keeps what they said. One at a time.
class MessageAnswers
{
public:
    explicit MessageAnswers(int given = kivMessageBoxForm::AnswerOk)
        : answer(given)
    {
        kivMessageBoxForm::setAnswerer([this](const kivMessageBoxForm::Request &request) {
            titles.append(request.title);
            texts.append(request.text);
            return answer;
        });
    }
    ~MessageAnswers() { kivMessageBoxForm::setAnswerer({}); }
    MessageAnswers(const MessageAnswers &) = delete;
    MessageAnswers &operator=(const MessageAnswers &) = delete;

    int count() const { return texts.size(); }

    int answer;
    QStringList titles;
    QStringList texts;
};
