#include "indexfactsview.h"

#include "createconnection.h"
#include "importreporttext.h"
#include "indexfacts.h"
#include "indexjob.h"
#include "indexmaintenance.h"
#include "uploadstatus.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>

namespace {

constexpr int pathCharacters = 60;
constexpr int columnGap = 24;

QString nothing()
{
    return QStringLiteral("–");
}

} // namespace

IndexFactsView::IndexFactsView(QWidget *parent)
    : QWidget(parent)
{
    build();
}

void IndexFactsView::build()
{
    auto *lines = new QFormLayout;
    m_path = addLine(lines, tr("File:"), QStringLiteral("path"));
    m_path->setWordWrap(true);
    m_path->setMinimumWidth(pathCharacters * fontMetrics().averageCharWidth());
    m_size = addLine(lines, tr("Size:"), QStringLiteral("size"));
    m_failure = new QLabel(this);
    m_failure->setObjectName(QStringLiteral("failure"));
    m_failure->setWordWrap(true);
    m_failure->setTextFormat(Qt::PlainText);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(lines);
    layout->addWidget(m_failure);
    layout->addLayout(buildCounts());
}

QLayout *IndexFactsView::buildCounts()
{
    struct State
    {
        QString stored;
        QString caption;
    };
    const QVector<State> states{{UploadStatus::notUploaded(), tr("Not uploaded")},
        {UploadStatus::uploading(), tr("Being uploaded")}, {UploadStatus::uploaded(), tr("Uploaded")}};
    const QVector<QPair<RecordLevel, QString>> levels{{RecordLevel::Patient, tr("Patients")},
        {RecordLevel::Study, tr("Studies")}, {RecordLevel::Series, tr("Series")},
        {RecordLevel::Image, tr("Images")}};
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(columnGap);
    grid->setColumnStretch(states.size() + 2, 1);
    grid->addWidget(new QLabel(tr("In all"), this), 0, 1, Qt::AlignRight);
    for (int state = 0; state < states.size(); ++state) {
        grid->addWidget(new QLabel(states[state].caption, this), 0, state + 2, Qt::AlignRight);
    }
    for (int row = 0; row < levels.size(); ++row) {
        const RecordLevel level = levels[row].first;
        grid->addWidget(new QLabel(levels[row].second, this), row + 1, 0);
        m_records[level] = addCount(grid, row + 1, 1, levels[row].second);
        m_records[level]->setObjectName(QLatin1String(recordTableName(level)));
        for (int state = 0; state < states.size() && level != RecordLevel::Image; ++state) {
            QLabel *count = addCount(grid, row + 1, state + 2,
                QStringLiteral("%1, %2").arg(levels[row].second, states[state].caption));
            count->setObjectName(m_records[level]->objectName() + states[state].stored);
            m_byState[level][states[state].stored] = count;
        }
    }
    return grid;
}

QLabel *IndexFactsView::addLine(QFormLayout *lines, const QString &caption, const QString &objectName)
{
    auto *value = new QLabel(this);
    value->setObjectName(objectName);
    value->setAccessibleName(caption);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    lines->addRow(caption, value);
    return value;
}

QLabel *IndexFactsView::addCount(QGridLayout *grid, int row, int column, const QString &name)
{
    auto *count = new QLabel(nothing(), this);
    count->setAccessibleName(name);
    grid->addWidget(count, row, column, Qt::AlignRight);
    return count;
}

void IndexFactsView::refresh()
{
    const QString path = databasePath();
    m_path->setText(path);
    m_size->setText(QLocale().formattedDataSize(indexSizeOnDisk(path)));
    m_failure->setText(connectionFailureText(connectionFailure()));
    m_failure->setVisible(!m_failure->text().isEmpty());
    if (m_failure->isVisibleTo(this)) {
        showNothing();
        return;
    }
    delete m_count; // a count that nobody waits for any more
    m_count = new IndexJob(
        [path](const std::atomic<bool> &stop, const IndexJob::Progress &) {
            return QVariant::fromValue(IndexFacts::of(path, stop));
        },
        this);
    connect(m_count, &IndexJob::finished, this,
        [this](const QVariant &result) { show(result.value<IndexFacts>()); });
    m_count->start();
}

void IndexFactsView::show(const IndexFacts &facts)
{
    if (!facts.isRead) {
        showNothing();
        return;
    }
    const QLocale locale;
    for (auto level = m_records.constBegin(); level != m_records.constEnd(); ++level) {
        level.value()->setText(locale.toString(facts.records[level.key()]));
        const QMap<QString, QLabel *> states = m_byState.value(level.key());
        for (auto state = states.begin(); state != states.end(); ++state) {
            state.value()->setText(locale.toString(facts.byState[level.key()].value(state.key())));
        }
    }
}

void IndexFactsView::showNothing()
{
    for (QLabel *count : qAsConst(m_records)) {
        count->setText(nothing());
    }
    for (const QMap<QString, QLabel *> &states : qAsConst(m_byState)) {
        for (QLabel *count : states) {
            count->setText(nothing());
        }
    }
}
