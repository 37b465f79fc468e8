#include "configlocation.h"
#include "dicomservers.h"
#include "exportrequest.h"
#include "frame.h"
#include "inifile.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "receivesettings.h"
#include "recordform.h"
#include "retrievalmodel.h"
#include "testfiles.h"
#include "testmain.h"
#include "windowparts.h"

#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QDialog>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeView>
#include <QTreeWidget>
#include <QtTest>

#include <functional>
#include <optional>

namespace {

constexpr int networkMs = 120000;
constexpr int imageCount = 93; ///< of the study
constexpr char patientId[] = "8775070";
constexpr char destination[] = "Archive";

} // namespace

/**
 * A study's whole way, by what a person does at the window and real programs at the other ends: received,
 * seen in the tables, sent to an archive, found there, deleted here, retrieved by both ways, exported as
 * media that other toolkits read.
 */
class SceneTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        if (sharedData().isEmpty()) {
            QSKIP("The shared corpus is not there.");
        }
        m_folder = std::make_unique<QTemporaryDir>();
        ConfigLocation::setBase(m_folder->path());
        for (const char *name : {"main.ini", "dicomsendservice.ini"}) {
            writeFile(m_folder->filePath(QStringLiteral("config/") + QLatin1String(name)), {});
        }
        m_answers.emplace();
        m_port = freePort();
        m_archive = DicomServer::orthanc({{ReceiveSettings::ownAeTitle(), m_port}});
        configure(*m_archive);
        m_frame = std::make_unique<Frame>();
    }

    void cleanup()
    {
        m_frame.reset();
        m_archive.reset();
        m_answers.reset();
        ConfigLocation::setBase({});
    }

    void aStudyGoesRound()
    {
        const std::function<void()> steps[] = {[this] { receives(); }, [this] { sends(); },
            [this] { isFoundThere(); }, [this] { deletes(); }, [this] { retrieves("get"); },
            [this] { deletes(); }, [this] { retrieves("move"); }, [this] { exportsMedia(); },
            [this] { othersReadIt(); }};
        for (const auto &step : steps) {
            step();
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }

private:
    void configure(const DicomServer &archive) const
    {
        ReceiveSettings settings = ReceiveSettings::read();
        settings.enabled = true;
        settings.port = m_port;
        QVERIFY(settings.write());
        const QString file = m_folder->filePath(QStringLiteral("config/dicomsendservice.ini"));
        const QString group = QLatin1String(destination) + QLatin1Char('/');
        QVERIFY(IniFile::setValue(file, group + QStringLiteral("AETitle"), archive.aeTitle()));
        QVERIFY(IniFile::setValue(file, group + QStringLiteral("IP"), DicomServer::host()));
        QVERIFY(IniFile::setValue(file, group + QStringLiteral("Port"), archive.port()));
    }

    void setMethod(const char *method) const
    {
        QVERIFY(IniFile::setValue(m_folder->filePath(QStringLiteral("config/dicomsendservice.ini")),
            QLatin1String(destination) + QStringLiteral("/RetrieveMethod"), QLatin1String(method)));
    }

    int images() const { return m_frame->index.count("imageformat"); }

    void choosePatient() const
    {
        QTRY_COMPARE(m_frame->patientView()->model()->rowCount(), 1);
        Frame::click(m_frame->patientView(), 0, QStringLiteral("PatientID"));
        QCOMPARE(m_frame->patientView()->selectionModel()->selectedRows().size(), 1);
    }

    void receives() const
    {
        const ToolRun sent = runTool(QStringLiteral("storescu"),
            {QStringLiteral("+sd"), QStringLiteral("-aec"), ReceiveSettings::ownAeTitle(),
                DicomServer::host(), QString::number(m_port),
                sharedData() + QStringLiteral("/01-series/ct-head")});
        QVERIFY2(sent.exitCode == 0, sent.output.constData());
        QTRY_COMPARE_WITH_TIMEOUT(images(), imageCount, networkMs);
        choosePatient();
        const auto &forms = m_frame->window->forms();
        for (int level = 1; level <= 2; ++level) {
            QTRY_COMPARE(forms[level]->view()->model()->rowCount(), 1);
            forms[level]->view()->selectRow(0);
            forms[level]->selectIndex(forms[level]->view()->model()->index(0, 1));
        }
        QTRY_COMPARE(forms[3]->view()->model()->rowCount(), imageCount);
        choosePatient();
    }

    void sends() const
    {
        m_frame->action("actionSendDicom")->trigger();
        QTRY_VERIFY(windowCalled<QDialog>("dicomSend"));
        const auto *dialog = windowCalled<QDialog>("dicomSend");
        const auto *list = dialog->findChild<QTreeWidget *>(QStringLiteral("destinations"));
        QCOMPARE(list->topLevelItemCount(), 1);
        list->topLevelItem(0)->setCheckState(0, Qt::Checked);
        QSignalSpy accepted(m_frame->window->library(), &PatientManagerMainWindow::notifyInstanceSent);
        clickPart(dialog, "send");
        QTRY_COMPARE_WITH_TIMEOUT(accepted.count(), imageCount, networkMs);
        clickPart(dialog, "close");
    }

    void isFoundThere() const
    {
        const QJsonObject question{{QStringLiteral("Level"), QStringLiteral("Instance")},
            {QStringLiteral("Query"), QJsonObject{{QStringLiteral("PatientID"), QLatin1String(patientId)}}}};
        const QJsonDocument found =
            m_archive->rest(QStringLiteral("/tools/find"), "POST", QJsonDocument(question).toJson());
        QCOMPARE(found.array().size(), imageCount);
    }

    void deletes() const
    {
        choosePatient();
        m_frame->action("actionDelete")->trigger();
        QTRY_COMPARE(m_frame->patientView()->model()->rowCount(), 0);
        QCOMPARE(images(), 0);
        QTRY_COMPARE(
            filesBelow(m_frame->index.folder() + QStringLiteral("/store"), {QStringLiteral("*.dcm")}),
            QStringList());
    }

    void retrieves(const char *method) const
    {
        setMethod(method);
        m_frame->action("actionQueryRetrieve")->trigger();
        QTRY_VERIFY(windowCalled<QWidget>("QueryRetrieveWindow"));
        auto *window = windowCalled<QWidget>("QueryRetrieveWindow");
        auto *name = window->findChild<QLineEdit *>(QStringLiteral("name"));
        name->setText(QStringLiteral("austrial"));
        clickPart(window, "search");
        auto *results = window->findChild<QTreeView *>(QStringLiteral("results"));
        QTRY_COMPARE_WITH_TIMEOUT(results->model()->rowCount(), 1, networkMs);
        results->setFocus();
        results->setCurrentIndex(results->model()->index(0, 0));
        clickPart(window, "retrieve");
        QTRY_COMPARE_WITH_TIMEOUT(images(), imageCount, networkMs);
        const auto *retrievals = window->findChild<QAbstractItemView *>(QStringLiteral("retrievals"));
        const auto isShare = [retrievals] {
            return retrievals->model()->index(0, 3).data(Qt::UserRole).toDouble();
        };
        QTRY_COMPARE_WITH_TIMEOUT(isShare(), 1.0, networkMs);
        const auto *model = qobject_cast<const RetrievalModel *>(retrievals->model());
        QVERIFY(model);
        QCOMPARE(model->retrieval(0).used,
            qstrcmp(method, "get") == 0 ? RetrieveMethod::Get : RetrieveMethod::Move);
        clickPart(window, "removeEnded");
        window->close();
    }

    void exportsMedia()
    {
        choosePatient();
        m_frame->action("actionExportAs")->trigger();
        QTRY_VERIFY(windowCalled<QDialog>("exportDialog"));
        auto *dialog = windowCalled<QDialog>("exportDialog");
        dialog->findChild<QButtonGroup *>()->button(int(ExportFormat::Media))->click();
        const QString target = m_folder->filePath(QStringLiteral("media"));
        QVERIFY(QDir().mkpath(target));
        dialog->findChild<QLineEdit *>(QStringLiteral("exportTarget"))->setText(target);
        dialog->accept();
        m_media = target + QStringLiteral("/DICOMDIR"); // it grows in a hidden folder beside it
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_media), networkMs);
    }

    void othersReadIt() const
    {
        const ToolRun dump = runTool(QStringLiteral("dcmdump"), {m_media});
        QCOMPARE(dump.exitCode, 0);
        QCOMPARE(dump.output.count("DirectoryRecordType") - 3, imageCount); // patient, study, series
        QCOMPARE(dump.output.count("[IMAGE]"), imageCount);
        const ToolRun python =
            runTool(QStringLiteral("/usr/bin/python3"), // the system's, which has the toolkit
                {QStringLiteral("-c"),
                    QStringLiteral("import os, sys, pydicom\n"
                                   "top = os.path.dirname(sys.argv[1])\n"
                                   "records = pydicom.dcmread(sys.argv[1]).DirectoryRecordSequence\n"
                                   "images = [r for r in records if r.DirectoryRecordType == 'IMAGE']\n"
                                   "for r in images:\n"
                                   "    file = pydicom.dcmread(os.path.join(top, *r.ReferencedFileID))\n"
                                   "    assert file.SOPInstanceUID == r.ReferencedSOPInstanceUIDInFile\n"
                                   "    assert file.PatientID == sys.argv[2] and len(file.PixelData) > 0\n"
                                   "print(len(images))\n"),
                    m_media, QLatin1String(patientId)});
        QVERIFY2(python.exitCode == 0, python.output.constData());
        QCOMPARE(python.output.trimmed().toInt(), imageCount);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<DicomServer> m_archive;
    std::unique_ptr<Frame> m_frame;
    std::optional<MessageAnswers> m_answers;
    quint16 m_port = 0;
    QString m_media;
};

PM_TEST_MAIN(SceneTest)
#include "tst_scene.moc"
