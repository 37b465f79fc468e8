#include "dicomsend.h"
#include "testmain.h"
#include "windowfixture.h"

#include <QApplication>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>
#include <QtTest>

/// The action that sends: what the dialog gets of a selection, and what reaches the host.
class WindowSendTest : public WindowTest
{
    Q_OBJECT

private slots:
    void aGroupForEachPatientAndOneLineForEachName()
    {
        send({patients[2], patients[0]}, "patient");
        QVERIFY(dialog()->isVisible());
        QVERIFY(dialog()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        QCOMPARE(
            shown(), QStringList({QStringLiteral("Other, Name/XA/1"), QStringLiteral("Same, Name/MR/4")}));
        // Two groups and one name that both have.
        send({patients[0], patients[1]}, "patient");
        QCOMPARE(shown(), QStringList{QStringLiteral("Same, Name/MR/6")});
        QCOMPARE(asked().size(), 6);
        // Three groups and two names: nobody can tell whose the second is.
        send(patients, "patient");
        QCOMPARE(shown(), QStringList({QStringLiteral("Same, Name/MR/"), QStringLiteral("Other, Name/XA/")}));
    }

    void oneGroupForStudiesInTheOrderOfTheSelection()
    {
        send({studies[2], studies[1]}, "generalstudy");
        QCOMPARE(shown(), QStringList{QStringLiteral("Same, Name/US/4")});
        QCOMPARE(asked(),
            QStringList({QStringLiteral("/2/a"), QStringLiteral("/2/b"), QStringLiteral("/1/a"),
                QStringLiteral("/1/b")}));
    }

    void nothingIsMadeForImages()
    {
        send({1}, "imageformat");
        QVERIFY(!dialog());
        send({patients[0]}, "patient");
        QCOMPARE(shown().size(), 1);
        send({1}, "imageformat");
        QVERIFY(shown().isEmpty());
        QVERIFY(!dialog()->findChild<QPushButton *>(QStringLiteral("send"))->isEnabled());
    }

    void theRequestReachesTheHost()
    {
        QSignalSpy requests(window, &PatientManagerMainWindow::notifySendSelectData);
        send({patients[2]}, "patient");
        QCOMPARE(asked(), QStringList{QStringLiteral("/3/a")});
        QCOMPARE(requests.count(), 1);
        QCOMPARE(requests[0],
            QVariantList({QStringList{QStringLiteral("/3/a")}, QStringLiteral("ARCHIVE"),
                QStringLiteral("192.0.2.7"), 104}));
        delete dialog(); // made again, and connected again
        send({patients[0]}, "patient");
        asked();
        QCOMPARE(requests.count(), 2);
    }

private:
    /// Two patients of one name, and one of another name with an image less.
    void prepare() override
    {
        fixture->writeIni(QStringLiteral("config/dicomsendservice.ini"),
            "[Archive]\nAETitle=ARCHIVE\nIP=192.0.2.7\nPort=104\n");
        const TemporaryIndex &index = fixture->index;
        patients = {index.addPatient(QStringLiteral("Same^Name"), QStringLiteral("1")),
            index.addPatient(QStringLiteral("Same^Name"), QStringLiteral("2")),
            index.addPatient(QStringLiteral("Other^Name"), QStringLiteral("3"))};
        const QVector<QPair<int, QString>> series{{0, QStringLiteral("MR")}, {0, QStringLiteral("CT")},
            {1, QStringLiteral("US")}, {2, QStringLiteral("XA")}};
        studies.clear();
        for (int i = 0; i < series.size(); ++i) {
            const QString uid = QStringLiteral("1.%1").arg(i + 1);
            studies += index.addStudy(patients[series[i].first], uid);
            const qlonglong added =
                index.addSeries(studies.last(), uid + QStringLiteral(".1"), series[i].second);
            index.addImage(added, uid + QStringLiteral(".1.1"), 1, QStringLiteral("/%1/a").arg(i));
            if (i < 3) {
                index.addImage(added, uid + QStringLiteral(".1.2"), 2, QStringLiteral("/%1/b").arg(i));
            }
        }
        window = &fixture->open();
    }

    void send(const QList<qlonglong> &keys, const char *table) const
    {
        window->onSelectTable(keys, QLatin1String(table));
        QVERIFY(QMetaObject::invokeMethod(window, "on_actionSendDicom_triggered"));
    }
    static dicomSend *dialog()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *found = qobject_cast<dicomSend *>(widget)) {
                return found;
            }
        }
        return nullptr;
    }
    /// "name/modality/number of files" of each line, and the total.
    static QStringList shown()
    {
        QStringList lines;
        const auto *records = dialog()->findChild<QTreeWidget *>(QStringLiteral("records"));
        for (int i = 0; i < records->topLevelItemCount(); ++i) {
            const QTreeWidgetItem *item = records->topLevelItem(i);
            lines += item->text(0) + QLatin1Char('/') + item->text(1) + QLatin1Char('/') + item->text(2);
        }
        return lines;
    }
    /// What the dialog asks its host to send.
    static QStringList asked()
    {
        QSignalSpy spy(dialog(), &dicomSend::sendDicomfiles);
        dialog()->findChild<QPushButton *>(QStringLiteral("send"))->click();
        return spy.value(0).value(0).toStringList();
    }

    PatientManagerMainWindow *window = nullptr;
    QList<qlonglong> patients;
    QList<qlonglong> studies; ///< two of the first patient, one of each other
};

PM_TEST_MAIN(WindowSendTest)
#include "windowsendtest.moc"
