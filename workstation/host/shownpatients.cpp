#include "shownpatients.h"

#include "createconnection.h"
#include "editcontroller.h"
#include "patientform.h"

#include <QSqlTableModel>

#include <algorithm>
#include <utility>

namespace {

constexpr int editLookMs = 400;
constexpr int minuteMs = 60'000;

QString arrivedOn(const QDate &day)
{
    return QStringLiteral("updated_time >= '%1'").arg(day.toString(Qt::ISODate));
}

} // namespace

ShownPatients::ShownPatients(const QVector<RecordForm *> &forms, EditController *edits, QObject *parent)
    : QObject(parent)
    , m_form(qobject_cast<PatientForm *>(forms.first()))
    , m_forms(forms)
    , m_edits(edits)
    , m_finder(databasePath())
    , m_filter(m_form->tableModel()->filter())
    , m_day(QDate::currentDate())
{
    m_retry.setSingleShot(true);
    m_retry.setInterval(editLookMs);
    connect(&m_retry, &QTimer::timeout, this, [this] { apply(m_dueFilter); });
    connect(&m_minute, &QTimer::timeout, this, &ShownPatients::onMinute);
    m_minute.start(minuteMs);
    connect(&m_finder, &PatientFinder::answered, this, &ShownPatients::onAnswered);
    connect(m_form, &RecordForm::rowsRead, this, &ShownPatients::onRowsRead);
}

int ShownPatients::count() const
{
    return m_form->tableModel()->rowCount();
}

bool ShownPatients::isSearch() const
{
    const bool isOfDates = m_pick != DatePick::ArrivedToday && m_pick != DatePick::Other;
    return isOfDates && (m_pick != DatePick::AllDates || !m_text.trimmed().isEmpty());
}

bool ShownPatients::show(const QString &text, DatePick pick)
{
    if (!showInstead(text, pick)) {
        return false;
    }
    m_wish = {m_text, m_pick};
    return true;
}

bool ShownPatients::showInstead(const QString &text, DatePick pick)
{
    if (!ask(pick == DatePick::ArrivedToday ? QString() : text, pick)) {
        return false;
    }
    fill();
    emit changed();
    return true;
}

bool ShownPatients::showCondition(const QString &condition)
{
    if (!ask(QString(), condition.isEmpty() ? DatePick::AllDates : DatePick::Other)) {
        return false;
    }
    m_isDue = false;
    m_retry.stop();
    m_finder.forget();
    m_filter = condition;
    m_form->onSearchPatient(condition);
    m_form->selectList(); // of the rows that were selected none is left
    emit listed();
    return true;
}

bool ShownPatients::ask(QString text, DatePick pick)
{
    if (!m_edits->mayDropEdits()) {
        return false;
    }
    emit asked();
    m_onceShown = nullptr;
    m_text = std::move(text);
    m_pick = pick;
    return true;
}

void ShownPatients::fill()
{
    m_isDue = true;
    m_retry.stop();
    m_day = QDate::currentDate();
    if (isSearch()) {
        m_finder.ask({m_text, studyDates(m_pick, m_day)});
    } else {
        m_finder.forget();
        apply(m_pick == DatePick::ArrivedToday ? arrivedOn(m_day) : QString());
    }
}

void ShownPatients::apply(const QString &filter)
{
    if (isBeingEdited()) {
        m_dueFilter = filter;
        m_retry.start();
        return;
    }
    m_filter = filter;
    m_isDue = false;
    m_form->showFound(filter);
    emit listed();
    if (const auto action = std::exchange(m_onceShown, nullptr)) {
        action();
    }
}

void ShownPatients::onAnswered(const std::vector<qint64> &keys, bool isFirst)
{
    const bool isSame = keys == m_keys;
    if (!isSame) {
        m_keys = keys;
        m_found.set(keys);
    }
    if (isFirst) {
        apply(m_found.condition());
    } else if (!isSame) {
        emit outdated();
    }
}

/// Where the filter is not the one of this object somebody else has filled the table.
void ShownPatients::onRowsRead()
{
    const QString filter = m_form->tableModel()->filter();
    if (filter != m_filter) {
        m_finder.forget();
        m_retry.stop();
        m_isDue = false;
        m_onceShown = nullptr;
        m_filter = filter;
        m_text.clear();
        m_pick = filter.isEmpty() ? DatePick::AllDates : DatePick::Other;
    }
    emit changed();
}

void ShownPatients::onceShown(std::function<void()> action)
{
    if (m_isDue) {
        m_onceShown = std::move(action);
    } else {
        action();
    }
}

void ShownPatients::onIndexChanged()
{
    m_finder.onIndexChanged();
}

/// At midnight "today" is another day.
void ShownPatients::onMinute()
{
    const bool isOfDays = m_pick != DatePick::AllDates && m_pick != DatePick::Other;
    if (isOfDays && m_day != QDate::currentDate()) {
        fill();
    }
}

bool ShownPatients::isBeingEdited() const
{
    return std::any_of(m_forms.begin(), m_forms.end(),
        [](const RecordForm *form) { return form->hasUnsavedEdits() || form->isEditing(); });
}
