#include "importreportpage.h"

#include "importissuemodel.h"
#include "importreporttext.h"
#include "kivmessageboxform.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSaveFile>
#include <QScreen>
#include <QTableView>

namespace {

constexpr int countsPerColumn = 3;
constexpr int pathCharacters = 50;
constexpr int verdictCharacters = 18;
constexpr int reasonCharacters = 40;
constexpr int visibleIssues = 10;
constexpr int leastIssues = 4;

/// As wide as its columns, unless the screen is smaller.
class IssueView : public QTableView
{
public:
    using QTableView::QTableView;
    QSize sizeHint() const override
    {
        const int wanted =
            (pathCharacters + verdictCharacters + reasonCharacters) * fontMetrics().averageCharWidth();
        return {qMin(wanted, screen()->availableSize().width() * 2 / 3),
            visibleIssues * verticalHeader()->defaultSectionSize()};
    }
    QSize minimumSizeHint() const override
    {
        return {QTableView::minimumSizeHint().width(), leastIssues * verticalHeader()->defaultSectionSize()};
    }
};

} // namespace

ImportReportPage::ImportReportPage(QWidget *parent)
    : QWidget(parent)
    , m_model(new ImportIssueModel(this))
{
    build();
}

void ImportReportPage::build()
{
    m_headline = new QLabel(this);
    m_headline->setObjectName(QStringLiteral("headline"));
    m_headline->setWordWrap(true);
    m_headline->setTextFormat(Qt::PlainText);
    m_headline->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_issuesCaption = new QLabel(tr("&Not indexed:"), this);
    m_issues = buildIssues();
    m_issuesCaption->setBuddy(m_issues);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_headline);
    layout->addLayout(buildCounts());
    layout->addWidget(m_issuesCaption);
    layout->addWidget(m_issues, 1);
    layout->addLayout(buildButtons());
}

/// Captioned numbers, as many below one another as fit the eye.
QLayout *ImportReportPage::buildCounts()
{
    auto *grid = new QGridLayout;
    const auto add = [this, grid](int place, const QString &caption) {
        auto *value = new QLabel(this);
        value->setAccessibleName(caption);
        const int column = place / countsPerColumn * 2;
        grid->addWidget(new QLabel(caption, this), place % countsPerColumn, column);
        grid->addWidget(value, place % countsPerColumn, column + 1, Qt::AlignRight);
        grid->setColumnStretch(column, 1);
        return value;
    };
    m_found = add(0, tr("Found"));
    m_found->setObjectName(QStringLiteral("found"));
    for (std::size_t i = 0; i < m_counts.size(); ++i) {
        m_counts[i] = add(int(i) + 1, verdictText(static_cast<FileVerdict>(i)));
        m_counts[i]->setObjectName(QStringLiteral("count%1").arg(i));
    }
    grid->setHorizontalSpacing(2 * fontMetrics().averageCharWidth());
    return grid;
}

QTableView *ImportReportPage::buildIssues()
{
    auto *view = new IssueView(this);
    view->setModel(m_model);
    view->setAccessibleName(tr("Files that were not indexed"));
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setTextElideMode(Qt::ElideMiddle);
    view->setWordWrap(false);
    view->setTabKeyNavigation(false);
    view->verticalHeader()->hide();
    view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    view->horizontalHeader()->setStretchLastSection(true);
    const int character = fontMetrics().averageCharWidth();
    view->setColumnWidth(ImportIssueModel::PathColumn, pathCharacters * character);
    view->setColumnWidth(ImportIssueModel::VerdictColumn, verdictCharacters * character);
    return view;
}

QLayout *ImportReportPage::buildButtons()
{
    auto *layout = new QHBoxLayout;
    QPushButton *saveButton = addButton(layout, tr("&Save…"), tr("Write this report to a text file"));
    saveButton->setObjectName(QStringLiteral("save"));
    connect(saveButton, &QPushButton::clicked, this, &ImportReportPage::askWhereToSave);
    layout->addStretch();
    m_retry = addButton(layout, tr("Try &again"), tr("Import just the files that could not be read"));
    m_retry->setObjectName(QStringLiteral("retry"));
    connect(m_retry, &QPushButton::clicked, this, [this] { emit retryRequested(m_report.retryPaths()); });
    m_close = addButton(layout, tr("Close"), QString());
    m_close->setObjectName(QStringLiteral("close"));
    connect(m_close, &QPushButton::clicked, this, &ImportReportPage::closeRequested);
    return layout;
}

QPushButton *ImportReportPage::addButton(QLayout *layout, const QString &text, const QString &toolTip)
{
    auto *button = new QPushButton(text, this);
    button->setToolTip(toolTip);
    button->setAutoDefault(true);
    layout->addWidget(button);
    return button;
}

void ImportReportPage::setReport(const ImportReport &report)
{
    m_report = report;
    m_headline->setText(importEndText(report));
    const QLocale locale;
    m_found->setText(locale.toString(report.found()));
    for (std::size_t i = 0; i < m_counts.size(); ++i) {
        m_counts[i]->setText(locale.toString(report.of(static_cast<FileVerdict>(i))));
    }
    m_model->setIssues(report.issues());
    m_issuesCaption->setVisible(!report.issues().isEmpty());
    m_issues->setVisible(!report.issues().isEmpty());
    m_retry->setEnabled(!report.retryPaths().isEmpty());
    m_close->setFocus();
}

void ImportReportPage::askWhereToSave()
{
    auto *dialog = new QFileDialog(this, tr("Save the report"), QStringLiteral("import-report.txt"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    dialog->setNameFilters({tr("Text files (*.txt)"), tr("All files (*)")});
    connect(dialog, &QFileDialog::fileSelected, this, &ImportReportPage::save);
    dialog->open();
}

void ImportReportPage::save(const QString &path)
{
    QSaveFile file(path);
    const QByteArray text = importReportText(m_report).toUtf8();
    const bool written = file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
    if (!written) {
        kivMessageBoxForm::warning(this, tr("Save the report"),
            tr("The report could not be written to %1: %2").arg(path, file.errorString()), 1, 1);
    }
}
