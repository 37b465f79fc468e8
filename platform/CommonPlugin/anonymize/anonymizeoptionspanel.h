#pragma once

#include "deidentifyoptions.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;
class QRadioButton;

/// Where anonymous copies go.
enum class AnonymizeOutput : quint8 { Folder, Index, Send, Upload };

/// How copies are made anonymous, what patients are called then, and where the copies go. GUI thread.
class AnonymizeOptionsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AnonymizeOptionsPanel(QWidget *parent = nullptr);

    DeidentifyOptions options() const;
    AnonymizeOutput output() const;
    /// The folder that was chosen; empty where there is none.
    QString folder() const;
    /// Why these settings cannot be used; empty where they can.
    QString obstacle() const;
    /// What the user should know, and may want all the same.
    QString caution() const;

signals:
    void changed();

private:
    void build();
    QWidget *buildOptions();
    QWidget *buildNames();
    QWidget *buildOutputs();
    QCheckBox *addOption(
        QLayout *layout, const QString &text, const QString &name, const QString &explanation);
    QLineEdit *addPattern(const QString &name, const QString &label, const QString &text);
    QRadioButton *addOutput(QLayout *layout, const QString &text, const QString &name);
    void chooseFolder();

    QCheckBox *m_dates = nullptr;
    QCheckBox *m_descriptors = nullptr;
    QCheckBox *m_characteristics = nullptr;
    QCheckBox *m_private = nullptr;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_id = nullptr;
    QRadioButton *m_toFolder = nullptr;
    QRadioButton *m_toIndex = nullptr;
    QRadioButton *m_toSend = nullptr;
    QLineEdit *m_folder = nullptr;
};
