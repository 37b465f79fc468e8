#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;

/// A password that is typed and may be shown, or that comes from the secret store and is used, and shown to
/// nobody, nor what is left of it. GUI thread.
class PasswordField : public QWidget
{
    Q_OBJECT

public:
    explicit PasswordField(QWidget *parent);

    QString text() const;
    /// From the secret store.
    void fillIn(const QString &password);
    bool isFilledIn() const { return m_isFilledIn; }
    void clear();

signals:
    void edited();

private:
    void setFilledIn(bool isFilledIn);

    QLineEdit *m_edit;
    QPushButton *m_reveal;
    bool m_isFilledIn = false;
};
