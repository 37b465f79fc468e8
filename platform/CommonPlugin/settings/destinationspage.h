#pragma once

#include "dicomdestination.h"
#include "settingspage.h"

class EchoCheck;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;

/// The DICOM destinations: a list, the fields of the chosen one, and whether it answers.
class DestinationsPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit DestinationsPage(QWidget *parent);

    void read() override;
    QString fault() const override;
    QStringList write() override;

private:
    void build();
    QLayout *buildList();
    QLayout *buildFields();
    QLineEdit *addField(QFormLayout *form, const QString &caption, const QString &name);
    void add();
    void remove();
    void fill(int chosen);
    void showChosen();
    void takeFields();
    void checkConnection();
    void forgetAnswer();

    QVector<DicomDestination> m_destinations;
    QVector<DicomDestination> m_stored; ///< as they were read
    QListWidget *m_list = nullptr;
    QPushButton *m_remove = nullptr;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_aeTitle = nullptr;
    QLineEdit *m_ip = nullptr;
    QSpinBox *m_port = nullptr;
    QPushButton *m_check = nullptr;
    QLabel *m_answer = nullptr;
    EchoCheck *m_echo = nullptr; ///< the latest one asked
    bool m_showing = false; ///< fields are being filled, not typed in
};
