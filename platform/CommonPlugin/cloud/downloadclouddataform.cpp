#include "downloadclouddataform.h"

#include "cloudquestionform.h"
#include "cloudresultspanel.h"
#include "cloudsearch.h"
#include "cloudstudymodel.h"
#include "companionwindow.h"
#include "downloadengine.h"
#include "downloadlistpanel.h"
#include "firstwindowsize.h"
#include "holdingscounter.h"
#include "httpuploadfile.h"
#include "importsettings.h"
#include "namedparts.h"
#include "sharedwindow.h"
#include "webfailuretext.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

namespace {

constexpr QSize usualSize{980, 720};

} // namespace

DownloadCloudDataForm *DownloadCloudDataForm::instance()
{
    return sharedWindow<DownloadCloudDataForm>([] { return new DownloadCloudDataForm; });
}

bool DownloadCloudDataForm::isDownloading()
{
    return DownloadEngine::isAnyRunning();
}

DownloadCloudDataForm::DownloadCloudDataForm(QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_search(new CloudSearch(this))
    , m_model(new CloudStudyModel(this))
    , m_holdings(new HoldingsCounter(this))
{
    build();
    connect(m_question, &CloudQuestionForm::asked, this, &DownloadCloudDataForm::search);
    connect(m_searchButton, &QPushButton::clicked, this, &DownloadCloudDataForm::search);
    connect(m_stopButton, &QPushButton::clicked, m_search, &CloudSearch::stop);
    connect(m_results, &CloudResultsPanel::downloadWanted, this, &DownloadCloudDataForm::download);
    connect(m_model, &CloudStudyModel::listingWanted, m_search, &CloudSearch::listSeries);
    connect(m_search, &CloudSearch::found, this, [this](const QVector<DicomJson> &studies) {
        m_model->add(studies);
        showHoldings();
    });
    connect(m_holdings, &HoldingsCounter::counted, m_model, &CloudStudyModel::setHoldings);
    connect(m_search, &CloudSearch::finished, this, &DownloadCloudDataForm::onSearched);
    connect(m_search, &CloudSearch::listed, this, &DownloadCloudDataForm::onListed);
    connect(HttpUploadFile::instance(), &HttpUploadFile::sessionChanged, this,
        &DownloadCloudDataForm::takeSession);
    takeSession();
}

void DownloadCloudDataForm::build()
{
    setWindowTitle(tr("Download from the Cloud"));
    m_who = new QLabel(this);
    m_who->setObjectName(QStringLiteral("who"));
    m_who->setTextFormat(Qt::PlainText);
    m_who->setWordWrap(true);
    auto *downloads = new QGroupBox(tr("Downloads"), this);
    m_downloads = new DownloadListPanel(downloads);
    auto *inside = new QVBoxLayout(downloads);
    inside->addWidget(m_downloads);
    auto *splitter = new QSplitter(Qt::Vertical, this);
    m_results = new CloudResultsPanel(m_model, splitter);
    splitter->addWidget(m_results);
    splitter->addWidget(downloads);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_who);
    layout->addWidget(buildSearch());
    layout->addWidget(splitter, 1);
    setFocusProxy(m_question);
    m_question->setFocus(); // whoever opens the window types a name
    closeOnEscape(this);
    resize(firstWindowSize(this, usualSize));
}

QWidget *DownloadCloudDataForm::buildSearch()
{
    auto *box = new QWidget(this);
    m_question = new CloudQuestionForm(box);
    m_searchButton =
        NamedParts::button<QPushButton>("search", tr("&Search"), tr("Look for studies in the cloud"), box);
    m_stopButton =
        NamedParts::button<QPushButton>("stopSearch", tr("Stop"), tr("Keep what was found so far"), box);
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(m_searchButton);
    buttons->addWidget(m_stopButton);
    auto *layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_question, 1);
    layout->addLayout(buttons);
    return box;
}

void DownloadCloudDataForm::setMainWindow(QWidget *window)
{
    if (m_mainWindow != window && window && !isVisible()) {
        const QPoint middle = window->window()->frameGeometry().center();
        move(middle - rect().center());
    }
    m_mainWindow = window;
}

void DownloadCloudDataForm::onJessionInfo(QByteArray /*sessionId*/)
{
    takeSession(); // which HttpUploadFile has had before anybody tells of it
}

void DownloadCloudDataForm::reflesh()
{
    takeSession();
    takeEngine();
    showHoldings();
}

void DownloadCloudDataForm::takeSession()
{
    const CloudSession &session = HttpUploadFile::instance()->session();
    if (session.id != m_session || m_who->text().isEmpty()) {
        m_session = session.id;
        m_search->setSession(session);
        m_toFetch.clear();
        m_model->clear();
        m_results->say({});
    }
    m_who->setText(session.isOpen()
            ? tr("Signed in to %1 as %2")
                  .arg(CloudSession::plainAddress(session.service.address),
                      session.user.isEmpty() ? tr("the owner of a token") : session.user)
            : tr("Nobody is signed in to the cloud."));
    m_results->showUnasked(session.isOpen());
    refreshButtons();
}

void DownloadCloudDataForm::takeEngine()
{
    DownloadEngine *engine = DownloadEngine::current();
    if (m_engine != engine) {
        m_engine = engine;
        connect(engine, &DownloadEngine::imported, this, &DownloadCloudDataForm::imported);
        connect(engine, &DownloadEngine::imported, this, &DownloadCloudDataForm::showHoldings);
    }
    engine->setPolicy(ImportSettings::policy());
    m_downloads->setEngine(engine);
}

void DownloadCloudDataForm::search()
{
    if (m_session.isEmpty()) {
        return;
    }
    m_toFetch.clear();
    m_model->clear();
    m_results->showSearching();
    m_search->search(m_question->question());
    refreshButtons();
}

void DownloadCloudDataForm::onSearched(const WebFailure &failure, bool isCutShort)
{
    m_results->showEnd(failure, isCutShort);
    askToSignIn(failure);
    refreshButtons();
}

/// Where the service does not accept the session any more.
void DownloadCloudDataForm::askToSignIn(const WebFailure &failure)
{
    if (failure.problem == WebProblem::Unauthorized) {
        emit HttpUploadFile::instance()->sessionRefused();
    }
}

void DownloadCloudDataForm::onListed(
    const QString &studyUid, const QVector<DicomJson> &series, const WebFailure &failure)
{
    m_model->setSeries(studyUid, series, failure);
    showHoldings();
    if (!failure.isNone()) {
        m_toFetch.remove(studyUid);
        m_results->say(WebFailureText::of(failure));
        askToSignIn(failure);
    } else if (m_toFetch.remove(studyUid)) {
        fetch(m_model->checkedOf(studyUid));
    }
}

/// Nothing of what was unchecked meanwhile.
void DownloadCloudDataForm::fetch(const DownloadStudy &study)
{
    if (!study.series.isEmpty()) {
        takeEngine(); // there may be another index since
        m_engine->add(study);
        m_model->uncheck(study.studyUid);
    }
}

void DownloadCloudDataForm::download()
{
    QStringList unlisted;
    const QVector<DownloadStudy> studies = m_model->studies().checked(&unlisted);
    for (const DownloadStudy &study : studies) {
        fetch(study);
    }
    for (const QString &uid : qAsConst(unlisted)) {
        m_toFetch.insert(uid);
        m_search->listSeries(uid);
    }
    if (studies.isEmpty() && unlisted.isEmpty()) {
        m_results->say(tr("Check the studies or series that you want."));
    }
}

void DownloadCloudDataForm::showHoldings()
{
    if (m_model->rowCount() > 0) {
        m_holdings->count(m_model->studies().studyUids(), m_model->studies().seriesUids());
    }
}

void DownloadCloudDataForm::refreshButtons()
{
    m_searchButton->setEnabled(!m_session.isEmpty());
    m_stopButton->setEnabled(m_search->isSearching());
}
