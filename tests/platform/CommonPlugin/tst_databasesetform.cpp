#include "createconnection.h"
#include "databasesetform.h"
#include "importscene.h"
#include "testmain.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

namespace {

QString shown(const char *name)
{
    return DataBaseSetForm::instance()->findChild<QLabel *>(QLatin1String(name))->text();
}

} // namespace

class DataBaseSetFormTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { DataBaseSetForm::instance()->close(); }
    void showsTheIndexAsItIsNow();
    void saysWhyThereIsNone();
};

void DataBaseSetFormTest::showsTheIndexAsItIsNow()
{
    const ImportScene scene;
    DataBaseSetForm *form = DataBaseSetForm::instance();
    form->show();
    QCOMPARE(shown("path"), scene.index.path());
    QCOMPARE(shown("patient"), QStringLiteral("0"));
    QVERIFY(shown("size") != QStringLiteral("0 bytes"));
    form->findChild<QPushButton *>(QStringLiteral("copy"))->click();
    QCOMPARE(QApplication::clipboard()->text(), scene.index.path());

    const qlonglong patient = scene.index.addPatient(QStringLiteral("A"), QStringLiteral("1"));
    const qlonglong study = scene.index.addStudy(patient, QStringLiteral("1.2"));
    scene.index.addStudy(patient, QStringLiteral("1.3"));
    const qlonglong series = scene.index.addSeries(study, QStringLiteral("1.2.1"));
    for (int i = 1; i <= 3; ++i) {
        scene.index.addImage(series, QStringLiteral("1.2.1.%1").arg(i));
    }
    form->close();
    form->show();
    QCOMPARE(shown("patient"), QStringLiteral("1"));
    QCOMPARE(shown("generalstudy"), QStringLiteral("2"));
    QCOMPARE(shown("generalseries"), QStringLiteral("1"));
    QCOMPARE(shown("imageformat"), QStringLiteral("3"));
    QVERIFY(!form->findChild<QLabel *>(QStringLiteral("failure"))->isVisible());
}

void DataBaseSetFormTest::saysWhyThereIsNone()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("letter.db"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    setDatabasePath(path);
    QVERIFY(!createConnection());
    DataBaseSetForm::instance()->show();
    QCOMPARE(shown("path"), path);
    QVERIFY(DataBaseSetForm::instance()->findChild<QLabel *>(QStringLiteral("failure"))->isVisible());
    QVERIFY(shown("failure").contains(path));
    QCOMPARE(shown("patient"), QStringLiteral("–"));
    setDatabasePath(QString());
}

PM_TEST_MAIN(DataBaseSetFormTest)
#include "tst_databasesetform.moc"
