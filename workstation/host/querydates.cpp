#include "querydates.h"

#include "querypanelparts.h"

#include <QCheckBox>
#include <QDate>
#include <QDateEdit>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

namespace {

/// How late a new day is noticed at most; the clock may also be set, or the computer have slept.
constexpr int lookIntervalMs = 60 * 1000;

/// The day of the oldest record; today where there is none.
QDate oldestDay()
{
    const QSqlDatabase index = QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false);
    QSqlQuery query(index);
    query.setForwardOnly(true);
    QDate day;
    if (index.isOpen() && query.exec(QStringLiteral("SELECT min(updated_time) FROM patient"))
        && query.next()) {
        day = QDate::fromString(query.value(0).toString().left(10), Qt::ISODate);
    }
    return day.isValid() ? day : QDate::currentDate();
}

} // namespace

QueryDates::QueryDates(QWidget *panel)
    : QObject(panel)
    , m_firstCheck(panel->findChild<QCheckBox *>(QLatin1String(QueryPanelPart::firstDayCheck)))
    , m_first(panel->findChild<QDateEdit *>(QLatin1String(QueryPanelPart::firstDay)))
    , m_lastCheck(panel->findChild<QCheckBox *>(QLatin1String(QueryPanelPart::lastDayCheck)))
    , m_last(panel->findChild<QDateEdit *>(QLatin1String(QueryPanelPart::lastDay)))
{
    connect(m_firstCheck, &QAbstractButton::toggled, m_first, &QWidget::setEnabled);
    connect(m_lastCheck, &QAbstractButton::toggled, m_last, &QWidget::setEnabled);
    m_first->setCalendarPopup(true);
    connect(&m_timer, &QTimer::timeout, this, &QueryDates::update);
    m_timer.start(lookIntervalMs);
    update();
}

void QueryDates::update()
{
    if (!m_firstCheck->isChecked()) {
        m_first->setDate(oldestDay());
    }
    if (!m_lastCheck->isChecked()) {
        m_last->setDate(QDate::currentDate());
    }
}
