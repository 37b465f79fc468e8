#include "columncaptions.h"
#include "configlocation.h"
#include "imageformatform.h"
#include "patientform.h"
#include "seriesform.h"
#include "studyform.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"

#include <QSettings>
#include <QSqlRecord>
#include <QSqlTableModel>
#include <QtTest>

namespace {

QString caption(const RecordForm &form, const char *column)
{
    const int section = form.tableModel()->fieldIndex(QLatin1String(column));
    return form.tableModel()->headerData(section, Qt::Horizontal).toString();
}

} // namespace

/// The captions of the columns: where they come from, and that the shipped ones fit the index.
class RecordTablesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { allowWarningsOfNamedSlots(); }

    void cleanup() { ConfigLocation::setBase(QString()); }

    void shipsACaptionForEveryColumn_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("table");
        for (const char *file : {"rename.ini", "rename.zh_CN.ini"}) {
            for (const char *table : {"patient", "generalstudy", "generalseries", "imageformat"}) {
                QTest::addRow("%s %s", file, table)
                    << QString::fromLatin1(file) << QString::fromLatin1(table);
            }
        }
    }

    void shipsACaptionForEveryColumn()
    {
        QFETCH(QString, file);
        QFETCH(QString, table);
        QSettings captions(QStringLiteral(PM_SOURCE_DIR "/config/") + file, QSettings::IniFormat);
        captions.beginGroup(table);
        QStringList named = captions.allKeys();
        QStringList columns;
        const QSqlRecord record = m_index.database().record(table);
        for (int i = 0; i < record.count(); ++i) {
            columns.append(record.fieldName(i));
            const QString text = captions.value(columns.last()).toString(); // empty where a comma parts it
            QVERIFY2(!text.isEmpty() && !text.contains(QLatin1Char(';')), qPrintable(columns.last()));
        }
        named.sort();
        columns.sort();
        QCOMPARE(named, columns);
    }

    void takesCaptionsFromTheFirstFileWithGroups()
    {
        const QTemporaryDir folder;
        const QString base = folder.filePath(QStringLiteral("bin"));
        ConfigLocation::setBase(base);
        QCOMPARE(caption(PatientForm(), "PatientName"), QStringLiteral("PatientName"));

        writeFile(base + QStringLiteral("/config/rename.ini"), "no group here\n");
        writeFile(folder.filePath(QStringLiteral("config/rename.ini")),
            "[patient]\nPatientName=患者姓名\nNoSuchColumn=x\n[generalstudy]\nStudyDate=Day\n");
        QCOMPARE(caption(PatientForm(), "PatientName"), QStringLiteral("患者姓名"));
        QCOMPARE(caption(PatientForm(), "PatientID"), QStringLiteral("PatientID"));
        QCOMPARE(caption(StudyForm(), "StudyDate"), QStringLiteral("Day"));

        writeFile(base + QStringLiteral("/config/rename.ini"), "[patient]\nPatientID=Number\n");
        QCOMPARE(caption(PatientForm(), "PatientName"), QStringLiteral("PatientName"));
        QCOMPARE(caption(PatientForm(), "PatientID"), QStringLiteral("Number"));
    }

    void laysALanguageOverTheSitesOwn()
    {
        const QTemporaryDir folder;
        ConfigLocation::setBase(folder.filePath(QStringLiteral("bin")));
        writeFile(folder.filePath(QStringLiteral("config/rename.ini")),
            "[patient]\nPatientName=Patient name\nPatientID=Number\nPatientComments=Remarks\n");
        writeFile(folder.filePath(QStringLiteral("config/rename.zh_CN.ini")),
            "[patient]\nPatientName=患者姓名\nPatientID=患者编号\nPatientSex=性别\n");
        ColumnCaptions::setLanguage(QStringLiteral("zh_CN"));
        const QHash<QString, QString> captions = ColumnCaptions::of(QStringLiteral("patient"));
        ColumnCaptions::setLanguage(QString());
        QCOMPARE(captions.value(QStringLiteral("PatientName")), QStringLiteral("患者姓名"));
        QCOMPARE(captions.value(QStringLiteral("PatientSex")), QStringLiteral("性别"));
        QCOMPARE(captions.value(QStringLiteral("PatientID")), QStringLiteral("Number"));
        QCOMPARE(captions.value(QStringLiteral("PatientComments")), QStringLiteral("Remarks"));
    }

private:
    TemporaryIndex m_index;
};

PM_TEST_MAIN(RecordTablesTest)
#include "tst_recordtables.moc"
