#pragma once

#include "commonplugin_export.h"

#include <QWidget>

class QLabel;
class QLineEdit;

/**
 * Asks for the name under which an inquiry is saved.
 *
 * Whoever shows it answers each name: with a text why it is refused, or an empty one. Accepted, it closes and
 * deletes itself, as it does when the user gives up. Knows no inquiries. GUI thread.
 */
class COMMONPLUGIN_EXPORT InquirySaveForm : public QWidget
{
    Q_OBJECT

public:
    explicit InquirySaveForm(QWidget *parent = nullptr);

signals:
    /// The name that was typed, without blanks around it; never empty.
    void setText(const QString &name);

public slots:
    /// @param text why the name was refused; empty where it was accepted
    void onSameInquiryName(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void build();
    void accept();

    QLineEdit *m_name;
    QLabel *m_refusal;
};
