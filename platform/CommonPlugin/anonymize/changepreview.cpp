#include "changepreview.h"

#include "anonymizetext.h"
#include "changemodel.h"
#include "indexjob.h"
#include "plaintableview.h"

#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

Q_DECLARE_METATYPE(DeidentifiedFile)

ChangePreview::ChangePreview(QWidget *parent)
    : QWidget(parent)
{
    build();
}

void ChangePreview::build()
{
    m_number = new QSpinBox(this);
    m_number->setObjectName(QStringLiteral("image"));
    m_number->setMinimum(1);
    m_number->setKeyboardTracking(false);
    m_number->setAccessibleName(tr("Number of the image"));
    connect(m_number, QOverload<int>::of(&QSpinBox::valueChanged), this, &ChangePreview::read);
    auto *label = new QLabel(tr("Ima&ge"), this);
    label->setBuddy(m_number);
    m_state = new QLabel(this);
    m_state->setObjectName(QStringLiteral("previewState"));
    m_state->setWordWrap(true);
    m_state->setTextFormat(Qt::PlainText);
    m_model = new ChangeModel(this);
    m_table = new PlainTableView(this);
    m_table->setObjectName(QStringLiteral("changes"));
    m_table->setAccessibleName(tr("What changes in the image, and texts that stay"));
    m_table->setModel(m_model);
    m_table->setColumnCharacters(ChangeModel::PlaceColumn, 13);
    m_table->setColumnCharacters(ChangeModel::NameColumn, 24);
    m_table->setColumnCharacters(ChangeModel::BeforeColumn, 28);
    m_table->horizontalHeader()->setStretchLastSection(true);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_number);
    row->addWidget(m_state, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(row);
    layout->addWidget(m_table, 1);
}

void ChangePreview::show(const DeidentifyRequest &request)
{
    m_request = request;
    const QSignalBlocker blocker(m_number);
    m_number->setMaximum(qMax(1, request.files.size()));
    m_number->setSuffix(tr(" of %1").arg(request.files.size()));
    m_number->setValue(1);
    read();
}

void ChangePreview::read()
{
    if (m_job) {
        m_job->stop();
        m_job.clear();
    }
    m_model->setChanges({});
    const QString path = m_request.files.value(m_number->value() - 1);
    if (path.isEmpty()) {
        m_state->setText(tr("The ticked studies have no images."));
        return;
    }
    m_state->setText(tr("Reading…"));
    m_table->setEmptyText({});
    const Deidentifier deidentifier(m_request.options, Pseudonyms(m_request.siteKey));
    auto *job = new IndexJob(
        [deidentifier, path](const std::atomic<bool> &stop, const IndexJob::Progress &) {
            return QVariant::fromValue(deidentifier.preview(QFile::encodeName(path), stop));
        },
        this);
    m_job = job;
    connect(job, &IndexJob::finished, this, [this, job](const QVariant &result) {
        job->deleteLater();
        if (job == m_job) {
            m_job.clear();
            showResult(result.value<DeidentifiedFile>());
        }
    });
    job->start();
}

void ChangePreview::showResult(const DeidentifiedFile &result)
{
    if (result.problem != DeidentifyProblem::None) {
        m_state->setText(AnonymizeText::problem(result.problem) + QLatin1Char(' ') + result.detail);
        return;
    }
    const auto kept = int(std::count_if(result.changes.begin(), result.changes.end(),
        [](const AttributeChange &change) { return change.isKept; }));
    QStringList lines{tr("%n attribute(s) change.", nullptr, result.changes.size() - kept)};
    if (kept > 0) {
        lines.append(tr("%n text(s) stay as they are: read them.", nullptr, kept));
    }
    lines.append(AnonymizeText::burnedIn(result.burnedIn));
    m_state->setText(lines.join(QLatin1Char(' ')).trimmed());
    m_table->setEmptyText(tr("Nothing changes."));
    m_model->setChanges(result.changes);
}
