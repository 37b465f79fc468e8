#include "previewbanner.h"

#include "dicomdate.h"
#include "imageinfo.h"
#include "personname.h"

#include <QGridLayout>
#include <QLabel>

namespace {

QString joined(QStringList parts)
{
    parts.removeAll(QString());
    return parts.join(QStringLiteral("   "));
}

QLabel *line(bool bold, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText); // a name may hold anything
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QFont font = label->font();
    font.setBold(bold);
    label->setFont(font);
    return label;
}

} // namespace

PreviewBanner::PreviewBanner(QWidget *parent)
    : QFrame(parent)
    , m_patient(line(true, this))
    , m_study(line(false, this))
{
    auto *warning = new QLabel(tr("Not for diagnosis"), this);
    warning->setObjectName(QStringLiteral("notForDiagnosis"));
    // Dark on amber: legible in every theme.
    warning->setStyleSheet(QStringLiteral(
        "QLabel { background: #ffc107; color: #000000; padding: 4px 10px; font-weight: bold; }"));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(8, 4, 8, 4);
    grid->addWidget(m_patient, 0, 0);
    grid->addWidget(m_study, 1, 0);
    grid->addWidget(warning, 0, 1, 2, 1, Qt::AlignVCenter);
    grid->setColumnStretch(0, 1);
}

void PreviewBanner::show(const ImageInfo &info)
{
    const DicomHeader &header = info.header;
    m_patient->setText(
        joined({personNameForDisplay(header[Attribute::PatientName]), header[Attribute::PatientID],
            dateForDisplay(header[Attribute::PatientBirthDate]), header[Attribute::PatientSex]}));
    const QString number = header[Attribute::SeriesNumber];
    m_study->setText(joined({dateForDisplay(header[Attribute::StudyDate]),
        header[Attribute::StudyDescription], header[Attribute::Modality],
        number.isEmpty() ? QString() : tr("Series %1").arg(number), header[Attribute::SeriesDescription]}));
    for (QLabel *label : {m_patient, m_study}) {
        label->setToolTip(label->text().toHtmlEscaped());
    }
}

void PreviewBanner::clear()
{
    m_patient->clear();
    m_study->clear();
}

QString PreviewBanner::text() const
{
    return m_patient->text() + QLatin1Char('\n') + m_study->text();
}
