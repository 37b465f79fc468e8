#pragma once

#include "deidentifyoptions.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;

/// How copies are made anonymous, and what patients are called then. GUI thread.
class AnonymizeOptionsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AnonymizeOptionsPanel(QWidget *parent = nullptr);

    DeidentifyOptions options() const;
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
    QCheckBox *addOption(
        QLayout *layout, const QString &text, const QString &name, const QString &explanation);
    QLineEdit *addPattern(const QString &name, const QString &label, const QString &text);

    QCheckBox *m_dates = nullptr;
    QCheckBox *m_descriptors = nullptr;
    QCheckBox *m_characteristics = nullptr;
    QCheckBox *m_private = nullptr;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_id = nullptr;
};
