#include "browserwindow.h"

#include "browserfoot.h"
#include "cloudquestionform.h"
#include "cloudsignin.h"
#include "firstwindowsize.h"
#include "httpuploadfile.h"
#include "loginform.h"
#include "seriesmodel.h"
#include "seriespreview.h"
#include "serviceview.h"
#include "studymodel.h"
#include "webfailuretext.h"

#include <QHeaderView>
#include <QListView>
#include <QLocale>
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
    auto *row = new QHBoxLayout;
    m_question = new CloudQuestionForm(centre);
    m_search = new QPushButton(tr("&Search"), centre);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setDefault(true);
    row->addWidget(m_question, 1);
    row->addWidget(m_search, 0, Qt::AlignBottom);
    m_foot = new BrowserFoot(centre);
    column->addLayout(row);
    column->addWidget(buildLists(), 1);
    column->addWidget(m_foot);
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
    m_studyList->sortByColumn(FoundStudy::Date, Qt::DescendingOrder);
    m_studyList->setTabKeyNavigation(false);
    m_studyList->verticalHeader()->hide();
    m_studyList->horizontalHeader()->setSectionResizeMode(FoundStudy::Description, QHeaderView::Stretch);
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

void BrowserWindow::connectParts()
{
    connect(m_question, &CloudQuestionForm::asked, this, &BrowserWindow::search);
    connect(m_search, &QPushButton::clicked, this, &BrowserWindow::search);
    connect(m_service, &ServiceView::studiesFound, m_studies, &StudyModel::add);
    connect(m_service, &ServiceView::studiesEnded, this, [this](const WebFailure &failure, bool isCutShort) {
        for (const int column : {FoundStudy::Name, FoundStudy::Id, FoundStudy::Date, FoundStudy::Modalities,
                 FoundStudy::Images}) {
            m_studyList->resizeColumnToContents(column); // the description takes what is left
        }
        m_foot->say(isCutShort ? tr("The first %Ln study(ies); narrow the search to see the others", nullptr,
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
        [this] { m_foot->setOpenable(m_seriesList->selectionModel()->hasSelection() && !m_fetch); });
    connect(m_seriesList, &QListView::activated, this, &BrowserWindow::openSeries);
    connect(m_foot, &BrowserFoot::openWanted, this, &BrowserWindow::openSeries);
    connect(m_foot, &BrowserFoot::stopWanted, this, [this] {
        if (m_fetch) {
            m_fetch->abort();
        }
    });
    connect(m_foot, &BrowserFoot::signInWanted, this, &BrowserWindow::askToSignIn);
    connect(m_signIn, &CloudSignIn::signedIn, this, &BrowserWindow::setSession);
    connect(m_signIn, &CloudSignIn::failed, this, [this](const WebFailure &failure) {
        if (failure.problem != WebProblem::Stopped) {
            m_foot->say(WebFailureText::of(failure));
            askToSignIn();
        }
    });
}

void BrowserWindow::begin()
{
    m_foot->say(tr("Signing in…"));
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

/// A fetch in the name of whoever was signed in ends here; previews that are shown stay.
void BrowserWindow::setSession(const CloudSession &session)
{
    m_service->setSession(session);
    m_studies->clear();
    m_series->clear();
    m_foot->setSession(session);
    endFetch();
    m_search->setEnabled(session.isOpen());
    if (session.isOpen()) {
        search();
    }
}

void BrowserWindow::search()
{
    if (m_service->canAsk()) {
        m_studies->clear();
        m_series->clear();
        m_foot->say(tr("Searching…"));
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
    m_foot->setOpenable(false);
    m_foot->setFetching(true);
    connect(fetch, &SeriesPreview::progress, this, [this](int images, qint64 bytes) {
        m_foot->say(
            tr("Fetching… %Ln image(s), %1", nullptr, images).arg(QLocale().formattedDataSize(bytes)));
    });
    connect(fetch, &SeriesPreview::finished, this, [this](const WebFailure &failure) {
        endFetch();
        m_foot->say({});
        onFailure(failure);
    });
}

void BrowserWindow::endFetch()
{
    m_fetch.clear();
    m_foot->setFetching(false);
    m_foot->setOpenable(m_seriesList->selectionModel()->hasSelection());
}

void BrowserWindow::onFailure(const WebFailure &failure)
{
    if (failure.isNone() || failure.problem == WebProblem::Stopped) {
        return;
    }
    m_foot->say(WebFailureText::of(failure));
    if (failure.problem == WebProblem::Unauthorized) {
        // Later: the question that was refused is still speaking.
        QTimer::singleShot(0, this, [this] {
            setSession({});
            askToSignIn();
        });
    }
}
