#include "browserwindow.h"

#include "cloudsignin.h"
#include "firstwindowsize.h"
#include "httpuploadfile.h"
#include "loginform.h"
#include "questionbar.h"
#include "seriesmodel.h"
#include "seriespreview.h"
#include "serviceview.h"
#include "studymodel.h"
#include "webfailuretext.h"

#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr QSize firstSize{1180, 760};
constexpr QSize seriesRoom{SeriesModel::side + 44, SeriesModel::side + 56};

} // namespace

BrowserWindow::BrowserWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_service(new ServiceView(this))
    , m_signIn(new CloudSignIn(this))
    , m_studies(new StudyModel(this))
    , m_series(new SeriesModel(this))
    , m_sorted(new QSortFilterProxyModel(this))
{
    setObjectName(QStringLiteral("BrowserWindow"));
    setWindowTitle(tr("Cloud Browser"));
    build();
    connectParts();
    setSession({});
    resize(firstWindowSize(this, firstSize));
}

BrowserWindow::~BrowserWindow()
{
    delete m_login;
}

void BrowserWindow::build()
{
    auto *centre = new QWidget(this);
    auto *column = new QVBoxLayout(centre);
    m_question = new QuestionBar(centre);
    column->addWidget(m_question);
    column->addWidget(buildLists(), 1);
    column->addWidget(buildFoot());
    setCentralWidget(centre);
}

QWidget *BrowserWindow::buildLists()
{
    m_sorted->setSourceModel(m_studies);
    m_sorted->setSortRole(StudyModel::sortRole);
    m_sorted->setSortCaseSensitivity(Qt::CaseInsensitive);
    m_studyList = new QTableView(this);
    m_studyList->setObjectName(QStringLiteral("studies"));
    m_studyList->setAccessibleName(tr("Studies"));
    m_studyList->setModel(m_sorted);
    m_studyList->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_studyList->setSelectionMode(QAbstractItemView::SingleSelection);
    m_studyList->setSortingEnabled(true);
    m_studyList->sortByColumn(StudyModel::Date, Qt::DescendingOrder);
    m_studyList->setTabKeyNavigation(false);
    m_studyList->verticalHeader()->hide();
    m_studyList->horizontalHeader()->setSectionResizeMode(StudyModel::Description, QHeaderView::Stretch);
    m_seriesList = new QListView(this);
    m_seriesList->setObjectName(QStringLiteral("series"));
    m_seriesList->setAccessibleName(tr("Series"));
    m_seriesList->setModel(m_series);
    m_seriesList->setViewMode(QListView::IconMode);
    m_seriesList->setResizeMode(QListView::Adjust);
    m_seriesList->setMovement(QListView::Static);
    m_seriesList->setUniformItemSizes(true);
    m_seriesList->setWordWrap(true);
    m_seriesList->setIconSize({SeriesModel::side, SeriesModel::side});
    m_seriesList->setGridSize(seriesRoom);
    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(m_studyList);
    splitter->addWidget(m_seriesList);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    return splitter;
}

QWidget *BrowserWindow::buildFoot()
{
    auto *foot = new QWidget(this);
    auto *row = new QHBoxLayout(foot);
    row->setContentsMargins(0, 0, 0, 0);
    m_said = new QLabel(foot);
    m_said->setObjectName(QStringLiteral("said"));
    m_said->setTextFormat(Qt::PlainText);
    m_said->setWordWrap(true);
    m_progress = new QProgressBar(foot);
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setRange(0, 0);
    m_progress->setTextVisible(false);
    m_progress->setMaximumWidth(160);
    m_stop = new QPushButton(tr("S&top"), foot);
    m_open = new QPushButton(tr("&Open Series"), foot);
    m_open->setObjectName(QStringLiteral("open"));
    m_who = new QLabel(foot);
    m_who->setObjectName(QStringLiteral("who"));
    m_who->setTextFormat(Qt::PlainText);
    m_signInButton = new QPushButton(foot);
    m_signInButton->setObjectName(QStringLiteral("signIn"));
    row->addWidget(m_said, 1);
    for (QWidget *part : QVector<QWidget *>{m_progress, m_stop, m_open, m_who, m_signInButton}) {
        row->addWidget(part);
    }
    m_progress->hide();
    m_stop->hide();
    return foot;
}

void BrowserWindow::connectParts()
{
    connect(m_question, &QuestionBar::asked, this, &BrowserWindow::search);
    connect(m_service, &ServiceView::studiesFound, m_studies, &StudyModel::add);
    connect(m_service, &ServiceView::studiesEnded, this, [this](const WebFailure &failure, bool isCutShort) {
        m_studyList->resizeColumnsToContents();
        say(isCutShort ? tr("The first %Ln study(ies); narrow the search to see the others", nullptr,
                m_studies->rowCount())
                       : tr("%Ln study(ies)", nullptr, m_studies->rowCount()));
        onFailure(failure);
    });
    connect(m_service, &ServiceView::seriesFound, m_series, &SeriesModel::add);
    connect(m_service, &ServiceView::seriesEnded, this, &BrowserWindow::onFailure);
    connect(m_service, &ServiceView::pictureMade, m_series, &SeriesModel::setPicture);
    connect(m_studyList->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &BrowserWindow::chooseStudy);
    connect(m_seriesList->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        [this] { m_open->setEnabled(m_seriesList->selectionModel()->hasSelection() && !m_fetch); });
    connect(m_seriesList, &QListView::activated, this, &BrowserWindow::openSeries);
    connect(m_open, &QPushButton::clicked, this, &BrowserWindow::openSeries);
    connect(m_stop, &QPushButton::clicked, this, [this] {
        if (m_fetch) {
            m_fetch->abort();
        }
    });
    connect(m_signInButton, &QPushButton::clicked, this, &BrowserWindow::askToSignIn);
    connect(m_signIn, &CloudSignIn::signedIn, this, &BrowserWindow::setSession);
    connect(m_signIn, &CloudSignIn::failed, this, [this](const WebFailure &failure) {
        if (failure.problem != WebProblem::Stopped) {
            say(WebFailureText::of(failure));
            askToSignIn();
        }
    });
}

void BrowserWindow::begin()
{
    say(tr("Signing in…"));
    m_signIn->startRemembered();
}

void BrowserWindow::askToSignIn()
{
    if (!m_login) {
        m_login = new LoginForm;
        m_login->setWindowFlag(Qt::WindowStaysOnTopHint);
        connect(m_login, &LoginForm::loginInfo, this,
            [this] { setSession(HttpUploadFile::instance()->session()); });
    }
    m_login->show();
    m_login->raise();
    m_login->activateWindow();
}

void BrowserWindow::setSession(const CloudSession &session)
{
    m_service->setSession(session);
    m_studies->clear();
    m_series->clear();
    m_open->setEnabled(false);
    m_question->setSearchable(session.isOpen());
    m_signInButton->setText(session.isOpen() ? tr("Sign In As…") : tr("Sign &In…"));
    m_who->setText(session.isOpen()
            ? tr("%1 at %2")
                  .arg(session.user.isEmpty() ? tr("Token") : session.user, session.service.address.host())
            : tr("Not signed in"));
    if (session.isOpen()) {
        search();
    }
}

void BrowserWindow::search()
{
    if (m_service->canAsk()) {
        m_studies->clear();
        m_series->clear();
        say(tr("Searching…"));
        m_service->askStudies(m_question->question());
    }
}

QString BrowserWindow::chosenStudy() const
{
    const QModelIndexList rows = m_studyList->selectionModel()->selectedRows();
    return rows.isEmpty() ? QString() : m_studies->uidAt(m_sorted->mapToSource(rows.first()).row());
}

void BrowserWindow::chooseStudy()
{
    m_series->clear();
    m_service->askSeries(chosenStudy(), SeriesModel::side);
}

void BrowserWindow::openSeries()
{
    const QString series = m_series->uidAt(m_seriesList->currentIndex().row());
    if (!m_fetch) {
        showFetch(m_service->open(chosenStudy(), series));
    }
}

void BrowserWindow::showFetch(SeriesPreview *fetch)
{
    if (!fetch) {
        return;
    }
    m_fetch = fetch;
    m_open->setEnabled(false);
    m_progress->show();
    m_stop->show();
    connect(fetch, &SeriesPreview::progress, this, [this](int images, qint64 bytes) {
        say(tr("Fetching… %Ln image(s), %1", nullptr, images).arg(QLocale().formattedDataSize(bytes)));
    });
    connect(fetch, &SeriesPreview::finished, this, [this](const WebFailure &failure) {
        m_fetch.clear();
        m_progress->hide();
        m_stop->hide();
        m_open->setEnabled(m_seriesList->selectionModel()->hasSelection());
        say({});
        onFailure(failure);
    });
}

void BrowserWindow::onFailure(const WebFailure &failure)
{
    if (failure.isNone() || failure.problem == WebProblem::Stopped) {
        return;
    }
    say(WebFailureText::of(failure));
    if (failure.problem == WebProblem::Unauthorized) {
        // Later: the question that was refused is still speaking.
        QTimer::singleShot(0, this, [this] {
            setSession({});
            askToSignIn();
        });
    }
}

void BrowserWindow::say(const QString &text)
{
    m_said->setText(text);
}
