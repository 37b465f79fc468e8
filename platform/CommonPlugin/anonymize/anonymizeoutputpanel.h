#pragma once

#include <QWidget>

class QLayout;
class QLineEdit;
class QRadioButton;

/// Where anonymous copies go.
enum class AnonymizeOutput : quint8 { Folder, Index, Send, Upload };

/// Asks where anonymous copies go. GUI thread.
class AnonymizeOutputPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AnonymizeOutputPanel(QWidget *parent = nullptr);

    AnonymizeOutput output() const;
    /// The folder that was chosen; empty where there is none.
    QString folder() const;
    /// Why the copies cannot go there; empty where they can.
    QString obstacle() const;

signals:
    void changed();

private:
    QRadioButton *addOutput(QLayout *layout, const QString &text, const QString &name);
    QLayout *buildFolder();
    void chooseFolder();

    QRadioButton *m_toFolder = nullptr;
    QRadioButton *m_toIndex = nullptr;
    QRadioButton *m_toSend = nullptr;
    QLineEdit *m_folder = nullptr;
};
