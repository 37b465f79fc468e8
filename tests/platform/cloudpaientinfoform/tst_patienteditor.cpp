#include "cloudpaientinfoform.h"
#include "dicomfilebuilder.h"
#include "httpuploadfile.h"
#include "keptpicture.h"
#include "kivmessageboxform.h"
#include "temporaryindex.h"
#include "testmain.h"
#include "websession.h"

#include <QGenericPluginFactory>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSqlQuery>
#include <QtTest>

namespace {

constexpr int mostMs = 30000;
const QString study = QStringLiteral("1.2.3.1");

} // namespace

/// The editor as hosts make it: a plugin, told what to edit by its setters.
class PatientEditorTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DicomServer> m_archive;
    std::unique_ptr<TemporaryIndex> m_index;
    QTemporaryDir m_folder;
    QPointer<CloudPaientInfoForm> m_editor;

    template <typename Widget>
    Widget *part(const char *name) const
    {
        auto *widget = m_editor->findChild<Widget *>(QLatin1String(name));
        return widget ? widget : (qFatal("no %s", name), nullptr);
    }
    QString said() const { return part<QLabel>("said")->text(); }
    bool isReady() const { return part<QLineEdit>("PatientName")->isEnabled(); }

    void begin(bool overwrites = true)
    {
        m_archive = WebArchive::start({{QStringLiteral("OverwriteInstances"), overwrites}});
        m_index.reset(); // there is one at a time
        m_index = std::make_unique<TemporaryIndex>();
        for (int number = 1; number <= 3; ++number) {
            const QString uid = number < 3 ? study : QStringLiteral("1.2.3.2");
            DicomFileBuilder()
                .patient(QStringLiteral("P1"), QStringLiteral("Mueller^Joerg"))
                .uids(uid, uid + QStringLiteral(".4"), QStringLiteral("%1.5.%2").arg(uid).arg(number))
                .set(0x00100030, QStringLiteral("19700101"))
                .set(0x00100040, QStringLiteral("M"))
                .write(m_folder.filePath(QStringLiteral("%1.dcm").arg(number)));
        }
        m_index->import({m_folder.path()});
        m_archive->fill({m_folder.path()});
    }

    void signIn() const
    {
        HttpUploadFile::instance()->setSession(webSessionAt(WebArchive::address(*m_archive)));
    }

    void open()
    {
        QObject *made = QGenericPluginFactory::create(QStringLiteral("cloudpaientinfoform"), QString());
        m_editor = qobject_cast<CloudPaientInfoForm *>(made);
        QVERIFY(m_editor);
        const QByteArray session = HttpUploadFile::instance()->getJsessionid();
        m_editor->setSelectPk(
            m_index->query(QStringLiteral("SELECT pk FROM generalstudy WHERE StudyInstanceUID = ?"), {study})
                .toLongLong());
        m_editor->setStudyUID(study);
        m_editor->setPatientName(QStringLiteral("Mueller^Joerg"));
        m_editor->setJsessionid(session);
        m_editor->setJsessionid(session, HttpUploadFile::instance()->getAssistUrl());
        QTRY_VERIFY_WITH_TIMEOUT(isReady(), mostMs);
    }

    QStringList patients() const
    {
        QStringList found;
        QSqlQuery query(QStringLiteral("SELECT PatientName FROM patient ORDER BY 1"));
        while (query.next()) {
            found.append(query.value(0).toString());
        }
        return found;
    }

private slots:
    void initTestCase() { allowWarning(QStringLiteral("must only be called once")); } // Qt's own

    void cleanup()
    {
        delete m_editor;
        HttpUploadFile::instance()->endSession();
    }

    /// What was changed is said, with the place, once both places have it.
    void correctsBothPlaces()
    {
        begin();
        signIn();
        open();
        QVERIFY(part<QRadioButton>("indexAndService")->isChecked());
        QVERIFY(!part<QPushButton>("save")->isEnabled());
        keepPicture(*m_editor, QStringLiteral("editor-read"));
        part<QLineEdit>("PatientName")->setText(QStringLiteral("Müller^Jörg"));
        part<QLineEdit>("PatientBirthDate")->setText(QStringLiteral("1970-13-01"));
        QVERIFY(!part<QPushButton>("save")->isEnabled());
        part<QLineEdit>("PatientBirthDate")->setText(QStringLiteral("1971-01-01"));
        part<QPlainTextEdit>("PatientComments")->setPlainText(QStringLiteral("two\nlines"));
        QSignalSpy saved(m_editor, &CloudPaientInfoForm::saved);
        part<QPushButton>("save")->click();
        QTRY_COMPARE_WITH_TIMEOUT(saved.count(), 1, mostMs);
        QVERIFY2(said().contains(QStringLiteral("index and service")), qPrintable(said()));
        QVERIFY(said().contains(QStringLiteral("Müller, Jörg")));
        QCOMPARE(patients(), QStringList{QStringLiteral("Müller^Jörg")});
        keepPicture(*m_editor, QStringLiteral("editor-saved"));
        QVERIFY(!part<QPushButton>("save")->isEnabled());
    }

    /// An archive that answers that it has stored, and has not, is seen through.
    void tellsThatTheServiceKeptTheOldOnes()
    {
        begin(false);
        signIn();
        open();
        part<QLineEdit>("PatientName")->setText(QStringLiteral("Müller^Jörg"));
        QSignalSpy saved(m_editor, &CloudPaientInfoForm::saved);
        part<QPushButton>("save")->click();
        QTRY_VERIFY_WITH_TIMEOUT(said().contains(QStringLiteral("still shows the old ones")), mostMs);
        QCOMPARE(saved.count(), 0);
        QCOMPARE(patients(), QStringList{QStringLiteral("Mueller^Joerg")});
        keepPicture(*m_editor, QStringLiteral("editor-kept"));
    }

    /// Without a session the index alone is offered, and a study of its own patient can be parted.
    void correctsOneStudyInTheIndexOnly()
    {
        begin();
        open();
        QVERIFY(!part<QRadioButton>("indexAndService")->isEnabled());
        part<QRadioButton>("thisStudy")->setChecked(true);
        part<QLineEdit>("PatientName")->setText(QStringLiteral("Müller^Jörg"));
        part<QPushButton>("save")->click();
        QTRY_VERIFY_WITH_TIMEOUT(said().contains(QStringLiteral("index only")), mostMs);
        const QStringList both{QStringLiteral("Mueller^Joerg"), QStringLiteral("Müller^Jörg")};
        QCOMPARE(patients(), both);
        // What is saved next is of the patient that the study has now.
        QTRY_VERIFY_WITH_TIMEOUT(isReady(), mostMs);
        QVERIFY(!part<QRadioButton>("thisStudy")->isEnabled());
        QVERIFY(part<QRadioButton>("allStudies")->isChecked());
    }

    /// Nothing is done in the name of somebody who has signed out; what was typed stays.
    void followsTheSession()
    {
        begin();
        signIn();
        open();
        part<QLineEdit>("PatientName")->setText(QStringLiteral("Müller^Jörg"));
        HttpUploadFile::instance()->endSession();
        QTRY_VERIFY_WITH_TIMEOUT(isReady(), mostMs);
        QVERIFY(!part<QRadioButton>("indexAndService")->isEnabled());
        QVERIFY(part<QRadioButton>("indexOnly")->isChecked());
        signIn();
        QTRY_VERIFY_WITH_TIMEOUT(isReady(), mostMs);
        QVERIFY(part<QRadioButton>("indexAndService")->isChecked());
        QCOMPARE(part<QLineEdit>("PatientName")->text(), QStringLiteral("Müller^Jörg"));

        int asked = 0;
        int answer = kivMessageBoxForm::AnswerCancel;
        kivMessageBoxForm::setAnswerer([&](const kivMessageBoxForm::Request &) { return ++asked, answer; });
        QTest::keyClick(m_editor, Qt::Key_Escape);
        QVERIFY(m_editor->isVisible());
        answer = kivMessageBoxForm::AnswerOk;
        QTest::keyClick(m_editor, Qt::Key_Escape);
        QTRY_VERIFY(!m_editor);
        QCOMPARE(asked, 2);
        open();
        QTest::keyClick(m_editor, Qt::Key_Escape); // nothing was typed
        QTRY_VERIFY(!m_editor);
        QCOMPARE(asked, 2);
        kivMessageBoxForm::setAnswerer({});
    }
};

PM_TEST_MAIN(PatientEditorTest)
#include "tst_patienteditor.moc"
