#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QPushButton;

/// The authority that is trusted beside the system's, as a file of certificates. Hidden until there is one or
/// it is offered. GUI thread.
class AuthorityChoice : public QWidget
{
    Q_OBJECT

public:
    explicit AuthorityChoice(QWidget *parent);

    /// Shows one, or none; begins anew.
    void begin(const QString &file);
    /// Shows how one can be chosen.
    void offer() { show(); }
    QString file() const { return m_file; }

private:
    void choose();
    void setFile(const QString &file);

    QLabel *m_name;
    QPushButton *m_forget;
    QString m_file;
};
