#pragma once

#include "commonwidgetplugin_export.h"

#include <QDialog>

#include <functional>

class QLayout;

/**
 * The message box of the workstation: an icon, a wrapped text that can be selected, and OK with or without
 * Cancel.
 *
 * The static functions show it and wait. OK answers 1, Cancel 2; Escape and the close button answer 2 where
 * the box has a Cancel, else 1. Texts are plain, since they carry what patients and databases are called.
 * GUI thread.
 */
class COMMONWIDGETPLUGIN_EXPORT kivMessageBoxForm : public QDialog
{
    Q_OBJECT

public:
    enum class Kind { Information, Warning, Question };
    enum Buttons { OkOnly = 1, OkAndCancel = 3 };
    enum Answer { AnswerOk = 1, AnswerCancel = 2 };

    /// What a box says and offers.
    struct Request
    {
        Kind kind = Kind::Information;
        QString title;
        QString text;
        int buttons = OkOnly;
        int defaultButton = AnswerOk; ///< the one that Return presses
    };

    explicit kivMessageBoxForm(const Request &request, QWidget *parent = nullptr);

    static int information(
        QWidget *parent, const QString &title, const QString &text, int buttons, int defaultButton);
    static int warning(
        QWidget *parent, const QString &title, const QString &text, int buttons, int defaultButton);
    static int question(
        QWidget *parent, const QString &title, const QString &text, int buttons, int defaultButton);

    /// For tests: answers in place of every box until it is unset by an empty function.
    static void setAnswerer(const std::function<int(const Request &)> &answerer);

    /// Escape and the close button.
    void reject() override;

private:
    static int ask(const Request &request, QWidget *parent);
    void build();
    QLayout *buildBody();
    QWidget *buildText();
    QWidget *buildButtons();

    Request m_request;
};
