#include "patientfields.h"

#include "correctiontext.h"
#include "dicomdate.h"
#include "personname.h"

#include <QComboBox>
#include <QDate>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace {

constexpr char shownDate[] = "yyyy-MM-dd";
constexpr char dicomDate[] = "yyyyMMdd";
constexpr int mostOfGroup = 64; // characters, by DICOM
constexpr int mostGroups = 3;
constexpr int mostOfId = 64;
constexpr int mostOfComments = 10240;
constexpr int commentLines = 3;
constexpr int narrowest = 150;
constexpr int roomOfFrame = 16;

QLabel *valueLabel(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setMinimumWidth(narrowest);
    return label;
}

} // namespace

PatientFields::PatientFields(QWidget *parent)
    : QWidget(parent)
{
    build();
    for (QLineEdit *edit : {m_name, m_id, m_birthDate}) {
        connect(edit, &QLineEdit::textChanged, this, &PatientFields::edited);
    }
    connect(m_sex, qOverload<int>(&QComboBox::currentIndexChanged), this, &PatientFields::edited);
    connect(m_comments, &QPlainTextEdit::textChanged, this, &PatientFields::edited);
    connect(m_name, &QLineEdit::textChanged, this, [this](const QString &name) {
        m_nameShown->setText(name.isEmpty()
                ? QString()
                : tr("Shown as %1").arg(CorrectionText::value(PatientField::Name, name)));
    });
}

void PatientFields::build()
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(18);
    int column = 1;
    for (const QString &title : {tr("In the index"), tr("In the service"), tr("Correct to")}) {
        auto *head = new QLabel(title, this);
        QFont bold = head->font();
        bold.setBold(true);
        head->setFont(bold);
        grid->addWidget(head, 0, column++);
    }
    m_name = new QLineEdit(this);
    m_name->setPlaceholderText(tr("Family^Given"));
    m_nameShown = new QLabel(this);
    m_nameShown->setTextFormat(Qt::PlainText);
    m_id = new QLineEdit(this);
    m_birthDate = new QLineEdit(this);
    m_birthDate->setPlaceholderText(tr("YYYY-MM-DD"));
    m_sex = new QComboBox(this);
    for (const char *sex : {"", "F", "M", "O"}) {
        m_sex->addItem(CorrectionText::value(PatientField::Sex, QLatin1String(sex)), QLatin1String(sex));
    }
    m_comments = new QPlainTextEdit(this);
    m_comments->setTabChangesFocus(true);
    m_comments->setMinimumHeight(m_comments->fontMetrics().lineSpacing() * commentLines + roomOfFrame);
    m_comments->setMaximumHeight(m_comments->minimumHeight());
    addRow(grid, PatientField::Name, m_name);
    grid->addWidget(m_nameShown, grid->rowCount(), 3);
    addRow(grid, PatientField::Id, m_id);
    addRow(grid, PatientField::BirthDate, m_birthDate);
    addRow(grid, PatientField::Sex, m_sex);
    addRow(grid, PatientField::Comments, m_comments);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 2);
    grid->setColumnStretch(3, 3);
}

void PatientFields::addRow(QGridLayout *grid, PatientField field, QWidget *editor)
{
    const int row = grid->rowCount();
    auto *label = new QLabel(CorrectionText::field(field) + QLatin1Char(':'), this);
    label->setBuddy(editor);
    editor->setObjectName(PatientValues::column(field));
    editor->setAccessibleName(CorrectionText::field(field));
    m_index.insert(field, valueLabel(this));
    m_service.insert(field, valueLabel(this));
    grid->addWidget(label, row, 0, Qt::AlignTop);
    grid->addWidget(m_index[field], row, 1, Qt::AlignTop);
    grid->addWidget(m_service[field], row, 2, Qt::AlignTop);
    grid->addWidget(editor, row, 3, Qt::AlignTop);
}

void PatientFields::setIndex(const PatientValues &values)
{
    m_indexValues = values;
    for (const PatientField field : PatientValues::fields) {
        m_index[field]->setText(CorrectionText::value(field, values[field]));
    }
    markDifferences();
}

void PatientFields::setService(const PatientValues &values, bool isThere)
{
    m_serviceValues = values;
    m_isInService = isThere;
    for (const PatientField field : PatientValues::fields) {
        m_service[field]->setText(isThere ? CorrectionText::value(field, values[field]) : QString());
    }
    markDifferences();
}

/// What differs between the two places stands out, by its weight rather than by a colour alone.
void PatientFields::markDifferences()
{
    for (const PatientField field : PatientValues::fields) {
        const bool differs =
            m_isInService && !PatientValues::isSame(field, m_indexValues[field], m_serviceValues[field]);
        for (QLabel *label : {m_index[field], m_service[field]}) {
            QFont font = label->font();
            font.setBold(differs);
            label->setFont(font);
            label->setToolTip(differs ? tr("The index and the service differ here") : QString());
        }
    }
}

void PatientFields::setWanted(const PatientValues &values)
{
    m_name->setText(values[PatientField::Name]);
    m_id->setText(values[PatientField::Id]);
    m_birthDate->setText(dateForDisplay(values[PatientField::BirthDate]));
    const QString sex = values[PatientField::Sex].trimmed();
    if (m_sex->findData(sex) < 0) {
        m_sex->addItem(sex, sex); // what others wrote is not lost by being shown
    }
    m_sex->setCurrentIndex(m_sex->findData(sex));
    m_comments->setPlainText(values[PatientField::Comments]);
}

PatientValues PatientFields::wanted() const
{
    PatientValues values;
    const QString name = m_name->text().trimmed();
    values[PatientField::Name] = m_name->isModified() ? personNameFromTyped(name) : name;
    values[PatientField::Id] = m_id->text().trimmed();
    const QString typed = m_birthDate->text().trimmed();
    const QDate date = QDate::fromString(typed, QLatin1String(shownDate));
    values[PatientField::BirthDate] = date.isValid() ? date.toString(QLatin1String(dicomDate)) : typed;
    values[PatientField::Sex] = m_sex->currentData().toString();
    values[PatientField::Comments] = m_comments->toPlainText();
    return values;
}

/// What others wrote may stay as it is, however odd.
bool PatientFields::isKept(PatientField field, const PatientValues &values) const
{
    return PatientValues::isSame(field, values[field], m_indexValues[field]);
}

QString PatientFields::fault() const
{
    const PatientValues values = wanted();
    const QStringList groups = values[PatientField::Name].split(QLatin1Char('='));
    bool isLong = groups.size() > mostGroups;
    for (const QString &group : groups) {
        isLong = isLong || group.size() > mostOfGroup;
    }
    if (isLong && !isKept(PatientField::Name, values)) {
        return tr("The name is too long: DICOM has room for %1 characters in each of three groups.")
            .arg(mostOfGroup);
    }
    if (values[PatientField::Id].size() > mostOfId && !isKept(PatientField::Id, values)) {
        return tr("The patient ID is too long: DICOM has room for %1 characters.").arg(mostOfId);
    }
    for (const PatientField field : {PatientField::Name, PatientField::Id}) {
        if (values[field].contains(QLatin1Char('\\')) && !isKept(field, values)) {
            return tr("A name and an ID cannot hold a backslash.");
        }
    }
    const QString birthDate = values[PatientField::BirthDate];
    const QDate date = QDate::fromString(birthDate, QLatin1String(dicomDate));
    if (!birthDate.isEmpty() && !isKept(PatientField::BirthDate, values)
        && (!date.isValid() || date > QDate::currentDate())) {
        return tr("The birth date must be a day of the past, as %1.").arg(QStringLiteral("1970-12-31"));
    }
    return values[PatientField::Comments].size() > mostOfComments && !isKept(PatientField::Comments, values)
        ? tr("The comments are too long.")
        : QString();
}

void PatientFields::setEditable(bool isEditable)
{
    for (QWidget *editor : QVector<QWidget *>{m_name, m_id, m_birthDate, m_sex, m_comments}) {
        editor->setEnabled(isEditable);
    }
}
