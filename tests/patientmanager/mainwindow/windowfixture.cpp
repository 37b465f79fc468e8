#include "windowfixture.h"

#include "configlocation.h"
#include "dicomfilebuilder.h"
#include "filechooser.h"
#include "httpuploadfile.h"
#include "imageformatform.h"
#include "kivmessageboxform.h"
#include "patientform.h"
#include "seriesform.h"
#include "sharedwindows.h"
#include "studyform.h"
#include "testfiles.h"
#include "testmain.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QSqlDatabase>
#include <QVariant>

namespace {

/// A UID of its own for each name, so that series never meet by accident.
QString uidOf(const QString &name)
{
    const QByteArray hash = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Md5);
    return QStringLiteral("2.25.") + QString::number(hash.left(7).toHex().toULongLong(nullptr, 16));
}

} // namespace

WindowFixture::WindowFixture()
    : m_workingDirectory(QDir::currentPath())
{
    QDir(m_folder.path()).mkpath(QStringLiteral("program"));
    QDir(m_folder.path()).mkpath(QStringLiteral("working"));
    QDir::setCurrent(path(QStringLiteral("working")));
    ConfigLocation::setBase(path(QStringLiteral("program")));
}

WindowFixture::~WindowFixture()
{
    closeWindow();
    ConfigLocation::setBase(QString());
    QDir::setCurrent(m_workingDirectory);
}

QString WindowFixture::path(const QString &name) const
{
    return m_folder.filePath(name);
}

void WindowFixture::writeIni(const QString &name, const QByteArray &text) const
{
    writeFile(path(name), text);
}

QString WindowFixture::makeSeries(const QString &folder, int images) const
{
    DicomFileBuilder builder;
    builder.patient(folder, folder + QStringLiteral("^Given"));
    const QString study = uidOf(folder);
    for (int i = 1; i <= images; ++i) {
        const QString instance = QStringLiteral("%1.1.%2").arg(study).arg(i);
        builder.uids(study, study + QStringLiteral(".1"), instance).instanceNumber(i);
        builder.write(path(folder + QStringLiteral("/%1.dcm").arg(i)));
    }
    return path(folder);
}

PatientManagerMainWindow &WindowFixture::open()
{
    closeWindow();
    m_connections = QSqlDatabase::connectionNames();
    m_window = std::make_unique<PatientManagerMainWindow>(nullptr);
    m_window->show();
    return *m_window;
}

void WindowFixture::closeWindow()
{
    m_window.reset();
    for (QWidget *left : QApplication::topLevelWidgets()) {
        left->close();
    }
}

QString WindowFixture::privateConnection() const
{
    for (const QString &name : QSqlDatabase::connectionNames()) {
        if (!m_connections.contains(name)) {
            return name;
        }
    }
    return {};
}

void WindowTest::initTestCase()
{
    allowWarningsOfNamedSlots();
}

void WindowTest::init()
{
    fixture.emplace();
    prepare();
}

void WindowTest::cleanup()
{
    FileChooser::setAnswerer({});
    kivMessageBoxForm::setAnswerer({});
    fixture->closeWindow();
    SharedWindows::deleteAll(); // the uploads that one shows are of this index
    HttpUploadFile::instance()->endSession();
    HttpUploadFile::instance()->releaseIndex();
    fixture.reset();
}

QWidget *visibleWindow(const char *className)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->inherits(className)) {
            return widget;
        }
    }
    return nullptr;
}

QVector<QWidget *> recordForms(const PatientManagerMainWindow &window)
{
    return {window.getPatientForm(), window.getStudyForm(), window.getSeriesForm(), window.getImagesForm()};
}
