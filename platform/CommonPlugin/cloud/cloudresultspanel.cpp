#include "cloudresultspanel.h"

#include "cloudstudymodel.h"
#include "cloudstudyview.h"
#include "downloadclouddataform.h"
#include "namedparts.h"
#include "webfailuretext.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

CloudResultsPanel::CloudResultsPanel(CloudStudyModel *model, QWidget *parent)
    : QWidget(parent)
    , m_model(*model)
    , m_view(new CloudStudyView(model, this))
    , m_said(new QLabel(this))
    , m_downloadButton(
          NamedParts::button<QPushButton>("download", DownloadCloudDataForm::tr("&Download Checked"),
              DownloadCloudDataForm::tr("Bring the checked studies and series into the index"), this))
{
    m_said->setObjectName(QStringLiteral("said"));
    m_said->setTextFormat(Qt::PlainText);
    m_said->setWordWrap(true);
    auto *below = new QHBoxLayout;
    below->addWidget(m_said, 1);
    below->addWidget(m_downloadButton);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view, 1);
    layout->addLayout(below);
    connect(m_downloadButton, &QPushButton::clicked, this, &CloudResultsPanel::downloadWanted);
    connect(m_view, &CloudStudyView::fetchRequested, this, &CloudResultsPanel::downloadWanted);
    connect(model, &CloudStudyModel::checksChanged, this, &CloudResultsPanel::refreshButton);
    refreshButton();
}

void CloudResultsPanel::refreshButton()
{
    m_downloadButton->setEnabled(m_model.studies().checkedCount() > 0);
}

void CloudResultsPanel::say(const QString &text)
{
    m_said->setText(text);
}

void CloudResultsPanel::showUnasked(bool canAsk)
{
    m_view->setEmptyText(canAsk
            ? DownloadCloudDataForm::tr("Search for a patient, an ID, a date or a modality.\nWithout any, "
                                        "the search lists all studies.")
            : DownloadCloudDataForm::tr("Sign in to search the cloud: the main window asks for it when you "
                                        "open this window there."));
}

void CloudResultsPanel::showSearching()
{
    m_view->setEmptyText(DownloadCloudDataForm::tr("Searching…"));
    say({});
}

void CloudResultsPanel::showEnd(const WebFailure &failure, bool isCutShort)
{
    m_view->setEmptyText(DownloadCloudDataForm::tr("Nothing found."));
    const int found = m_model.rowCount();
    if (failure.problem == WebProblem::Stopped) {
        say(DownloadCloudDataForm::tr("Stopped. Found so far: %n study(s)", nullptr, found));
    } else if (!failure.isNone()) {
        m_view->setEmptyText(WebFailureText::of(failure));
        say(WebFailureText::of(failure));
    } else if (isCutShort) {
        say(DownloadCloudDataForm::tr(
            "The first %n study(s) are shown; the service has more. Ask more closely to see them.", nullptr,
            found));
    } else {
        say(DownloadCloudDataForm::tr("Found: %n study(s)", nullptr, found));
    }
}
