#include "searchcontroller.h"

#include "editcontroller.h"
#include "importcentre.h"
#include "indexcounts.h"
#include "ntableview.h"
#include "searchbar.h"
#include "shownpatients.h"

#include <QAction>
#include <QSettings>
#include <QTimer>

#include <algorithm>

namespace {

constexpr char textKey[] = "search/text";
constexpr char datesKey[] = "search/dates";
constexpr int idleMs = 3000;

} // namespace

SearchController::SearchController(
    SearchBar *bar, ShownPatients *shown, NTableView *table, EditController *edits, QObject *parent)
    : QObject(parent)
    , m_bar(bar)
    , m_shown(shown)
    , m_table(table)
    , m_edits(edits)
    , m_findAction(new QAction(tr("&Find Patients…"), this))
{
    m_findAction->setObjectName(QStringLiteral("actionFindPatients"));
    m_findAction->setShortcut(QKeySequence::Find);
    connect(m_findAction, &QAction::triggered, m_bar, &SearchBar::takeFocus);
    connect(m_bar, &SearchBar::textWanted, this, &SearchController::onTextWanted);
    connect(m_bar, &SearchBar::pickWanted, this, [this](DatePick pick) {
        m_shown->show(m_bar->text(), pick);
        show();
    });
    connect(m_bar, &SearchBar::rowsWanted, this, [this] { m_shown->onceShown([this] { goToFirstRow(); }); });
    connect(m_shown, &ShownPatients::changed, this, &SearchController::show);
    const PatientFinder *finder = m_shown->finder();
    connect(finder, &PatientFinder::unreadable, this, [this] {
        m_isUnreadable = true;
        say();
    });
    connect(finder, &PatientFinder::prepared, this, [this] {
        m_isUnreadable = false;
        say();
    });
    show();
}

/// A text is looked for in all patients, unless studies of certain days are asked for.
void SearchController::onTextWanted(const QString &text)
{
    const bool isOfAll = m_shown->pick() == DatePick::ArrivedToday || m_shown->pick() == DatePick::Other;
    m_shown->show(text, isOfAll ? DatePick::AllDates : m_shown->pick());
    show(); // what was there before, where the user keeps unsaved edits
}

void SearchController::show()
{
    m_bar->setShown(m_shown->text(), m_shown->pick());
    say();
}

void SearchController::say()
{
    PatientFinder *finder = m_shown->finder();
    if (!finder->isAwaited()) {
        m_bar->setCount(m_shown->count(), std::max<qint64>(m_total, m_shown->count()));
    } else if (m_isUnreadable) {
        m_bar->setNote(tr("The index cannot be read"));
    } else if (!finder->known()) {
        m_bar->setNote(tr("Searching…"));
    }
}

void SearchController::setCounts(const IndexCounts &counts)
{
    m_total = counts.patients;
    say();
}

void SearchController::goToFirstRow()
{
    if (m_table->model()->rowCount() == 0 || !m_edits->mayDropEdits()) {
        return;
    }
    m_table->setFocus(Qt::ShortcutFocusReason);
    m_table->selectRow(0);
    emit m_table->clicked(m_table->currentIndex());
}

void SearchController::restore()
{
    const QSettings settings;
    const DatePick pick = datePickOf(settings.value(QLatin1String(datesKey)).toString());
    if (pick != DatePick::ArrivedToday) {
        m_shown->show(settings.value(QLatin1String(textKey)).toString(), pick);
    }
}

void SearchController::save() const
{
    QSettings settings;
    settings.setValue(QLatin1String(textKey), m_shown->wish().text);
    settings.setValue(QLatin1String(datesKey), datePickName(m_shown->wish().pick));
}

void SearchController::prepareWhenIdle(const ImportCentre *imports)
{
    QTimer::singleShot(idleMs, this, [this, imports] {
        if (!imports->isRunning()) {
            m_shown->finder()->prepare();
        }
    });
}
