#include "httpuploadfile.h"
#include "testfiles.h"
#include "testmain.h"

#include <QTemporaryDir>
#include <QtTest>

class HttpUploadFileTest : public QObject
{
    Q_OBJECT

private slots:
    void expertsComeFromTheFileAsItIsNow()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("experts.ini"));
        HttpUploadFile::setExpertFile(path);
        HttpUploadFile *cloud = HttpUploadFile::instance();
        QCOMPARE(HttpUploadFile::instance(), cloud);
        cloud->expertInfoList();
        QCOMPARE(cloud->getExpertNames(), QStringList());

        writeFile(path, QStringLiteral("[e1]\nname=王医生\n[e2]\nhospital=none\n").toUtf8());
        QCOMPARE(cloud->getExpertNames(), QStringList());
        cloud->expertInfoList();
        QCOMPARE(cloud->getExpertNames(), (QStringList{QStringLiteral("王医生"), QStringLiteral("e2")}));

        QVERIFY(QFile::remove(path));
        cloud->expertInfoList();
        QCOMPARE(cloud->getExpertNames(), QStringList());
        HttpUploadFile::setExpertFile(QString());
    }
};

PM_TEST_MAIN(HttpUploadFileTest)
#include "tst_httpuploadfile.moc"
