#pragma once

#include "commonplugin_export.h"

#include <QDialog>
#include <QStringList>
#include <QVector>

class DestinationList;
class QLabel;
class QPushButton;
class QTreeWidget;
class SendProgressPanel;
struct SendLabel;

/**
 * The dialog that sends images to DICOM destinations: whose images, where to, and how it goes.
 *
 * It sends nothing itself: sendDicomfiles() asks a host to. A host that knows SendNotifier tells there how
 * each send stands, also one that was begun before the dialog was opened; of any other the dialog knows what
 * setseriesSuccessCount() counts. Closing it ends no send. GUI thread.
 */
class COMMONPLUGIN_EXPORT dicomSend : public QDialog
{
    Q_OBJECT

public:
    explicit dicomSend(QWidget *parent = nullptr);
    ~dicomSend() override;

public slots:
    /// One more image has been sent.
    void setseriesSuccessCount();
    /// Offers the destinations that are configured now; the chosen ones stay chosen.
    void setSendServiceInfo();
    /**
     * Shows what will be sent; nothing is sent by that.
     * @param names the distinct names of the patients
     * @param modalities one for each name
     * @param files a group for each patient, or one for all; which group is whose is told by the order alone,
     * and so a count is shown only where it is certain
     */
    void setPatientInfo(QStringList names, QStringList modalities, QVector<QStringList> files);

signals:
    /// Send these files there; once for each chosen destination.
    void sendDicomfiles(QStringList files, QString aeTitle, QString ip, int port);

protected:
    void changeEvent(QEvent *event) override;

private:
    void build();
    QWidget *buildRecords();
    QWidget *buildDestinations();
    QLayout *buildButtons();
    void showRecords(const QStringList &names, const QStringList &modalities, const QVector<int> &counts);
    void send();
    void askAnew();
    void enableSend();
    QString obstacle() const;
    SendLabel labelFor(const QString &destination) const;

    QStringList m_files;
    QStringList m_patients; ///< as they are shown
    bool m_isAsked = false; ///< just these files for just these destinations
    QTreeWidget *m_records = nullptr;
    QLabel *m_total = nullptr;
    DestinationList *m_destinations = nullptr;
    SendProgressPanel *m_progress = nullptr;
    QLabel *m_obstacle = nullptr;
    QPushButton *m_send = nullptr;
};
