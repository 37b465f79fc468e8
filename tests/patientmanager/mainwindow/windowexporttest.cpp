#include "filechooser.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "patientform.h"
#include "recordcopy.h"
#include "studyform.h"
#include "testfiles.h"
#include "testmain.h"
#include "windowfixture.h"

#include <QtTest>

/// The silent export: which folders and files it makes, and that nothing gets out of the chosen folder.
class WindowExportTest : public WindowTest
{
    Q_OBJECT

private slots:
    void nothingIsSelected()
    {
        PatientManagerMainWindow &window = fixture->open();
        window.getPatientForm()->view()->clearSelection();
        const MessageAnswers said;
        bool asked = false;
        FileChooser::setAnswerer([&asked](const FileChooser::Request &) {
            asked = true;
            return QString();
        });
        QVERIFY(QMetaObject::invokeMethod(&window, "on_actionSaveDicom_triggered"));
        QCOMPARE(said.titles, QStringList(QStringLiteral("警告")));
        QCOMPARE(said.texts, QStringList(QStringLiteral("请选择要保存的病人数据!")));
        QVERIFY(!asked);
    }

    void patientsComeWithTheirTree()
    {
        PatientManagerMainWindow &window = fixture->open();
        window.getPatientForm()->view()->selectRow(0);
        // A selected patient selects nothing below; else the studies would be exported.
        window.getStudyForm()->view()->clearSelection();
        FileChooser::setAnswerer([this](const FileChooser::Request &) { return target; });
        const QString own = QStringLiteral("%1/%2/%3/one.dcm")
                                .arg(name("Pa", patient), name("St", study), name("Se", series));
        for (const char *bytes : {"one", "changed"}) {
            writeFile(fixture->path(QStringLiteral("files/one.dcm")), bytes);
            QVERIFY(QMetaObject::invokeMethod(&window, "on_actionSaveDicom_triggered"));
            QCOMPARE(made(), QStringList(own));
            QCOMPARE(bytesOf(target + QLatin1Char('/') + own), QByteArray(bytes));
        }
        QVERIFY(QFile::remove(fixture->path(QStringLiteral("files/one.dcm"))));
        QVERIFY(QMetaObject::invokeMethod(&window, "on_actionSaveDicom_triggered")); // and says nothing
        QCOMPARE(bytesOf(target + QLatin1Char('/') + own), QByteArray("changed"));
    }

    void holdersStandForUpperLevels()
    {
        fixture->open();
        for (int times = 0; times < 3; ++times) {
            RecordCopy(target).copy(RecordLevel::Study, {study});
            RecordCopy(target).copy(RecordLevel::Series, {series});
            RecordCopy(target).copy(RecordLevel::Image, {image});
        }
        const QString st = name("St", study);
        const QString se = name("Se", series);
        QStringList expected{QStringLiteral("Pa0/%1/%2/one.dcm").arg(st, se),
            QStringLiteral("pa_0/%1/%2/one.dcm").arg(st, se), QStringLiteral("St0/%1/one.dcm").arg(se),
            QStringLiteral("St_0/%1/one.dcm").arg(se), QStringLiteral("Se0/one.dcm"),
            QStringLiteral("Se_0/one.dcm")};
        expected.sort();
        QCOMPARE(made(), expected);
    }

    void nothingGetsOut()
    {
        fixture->open();
        const QString folder = fixture->path(QStringLiteral("files"));
        const QString odd =
            folder + QStringLiteral("/a\\..\\..\\..\\b.dcm"); // of a system with other separators
        writeFile(odd, "odd");
        const QString target1 = target + QStringLiteral("/link.dcm");
        const QStringList paths{folder + QStringLiteral("/.."), folder + QStringLiteral("/."),
            folder + QLatin1Char('/'), folder + QStringLiteral("/one.dcm") + QChar(QChar::Null),
            folder + QLatin1Char('/') + QString(300, QLatin1Char('x')), QString(), odd};
        for (int i = 0; i < paths.size(); ++i) {
            fixture->index.addImage(series, QStringLiteral("1.1.1.%1").arg(i + 2), i + 2, paths[i]);
        }
        RecordCopy(target).copy(RecordLevel::Series, {series});
        QCOMPARE(made(),
            QStringList({QStringLiteral("St0/%1/b.dcm").arg(name("Se", series)),
                QStringLiteral("St0/%1/one.dcm").arg(name("Se", series))}));
        // A link that lies at the target is replaced, not followed: its file stays as it is.
        QVERIFY(QFile::link(odd, target1));
        QVERIFY(RecordCopy::copyFile(folder + QStringLiteral("/one.dcm"), target1));
        QCOMPARE(bytesOf(odd), QByteArray("odd"));
        QVERIFY(!RecordCopy::copyFile(folder, target + QStringLiteral("/folder")));
    }

private:
    void prepare() override
    {
        target = fixture->path(QStringLiteral("outer/target"));
        QDir().mkpath(target);
        patient = fixture->index.addPatient(QStringLiteral("A^B"), QStringLiteral("1"));
        study = fixture->index.addStudy(patient, QStringLiteral("1.1"));
        series = fixture->index.addSeries(study, QStringLiteral("1.1.1"));
        const QString file = fixture->path(QStringLiteral("files/one.dcm"));
        writeFile(file, "one");
        image = fixture->index.addImage(series, QStringLiteral("1.1.1.1"), 1, file);
    }

    /// All below the outer folder of the target, from the target.
    QStringList made() const
    {
        QStringList found;
        for (const QString &path : filesBelow(fixture->path(QStringLiteral("outer")))) {
            found.append(QDir(target).relativeFilePath(path));
        }
        found.sort();
        return found;
    }

    QString name(const char *prefix, qlonglong key) const
    {
        return QLatin1String(prefix) + QString::number(key);
    }

    QString target;
    qlonglong patient = 0;
    qlonglong study = 0;
    qlonglong series = 0;
    qlonglong image = 0;
};

PM_TEST_MAIN(WindowExportTest)
#include "windowexporttest.moc"
