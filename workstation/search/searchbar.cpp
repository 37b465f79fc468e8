#include "searchbar.h"

#include <QAccessible>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>

namespace {

constexpr int margin = 6;
constexpr int leastTextWidth = 160;
constexpr int badgeCharacters = 22;

} // namespace

SearchBar::SearchBar(QWidget *parent)
    : QWidget(parent)
    , m_text(new QLineEdit(this))
    , m_pick(new QComboBox(this))
    , m_badge(new QLabel(this))
{
    setObjectName(QStringLiteral("SearchBar"));
    m_text->setObjectName(QStringLiteral("searchText"));
    m_text->setPlaceholderText(tr("Find patients: name, ID, birth date, accession number, study (Ctrl+F)"));
    m_text->setAccessibleName(tr("Find patients"));
    m_text->setClearButtonEnabled(true);
    m_text->setMinimumWidth(leastTextWidth);
    m_text->installEventFilter(this);
    m_pick->setObjectName(QStringLiteral("searchDates"));
    m_pick->setAccessibleName(tr("Study date"));
    m_pick->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_badge->setObjectName(QStringLiteral("searchBadge"));
    m_badge->setMinimumWidth(badgeCharacters * fontMetrics().averageCharWidth());
    m_badge->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    addPicks();

    auto *label = new QLabel(tr("Study &date:"), this);
    label->setBuddy(m_pick);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(margin, margin, margin, margin);
    row->addWidget(m_text, 1);
    row->addWidget(label);
    row->addWidget(m_pick);
    row->addWidget(m_badge);

    connect(m_text, &QLineEdit::textEdited, this, &SearchBar::textWanted);
    connect(m_pick, QOverload<int>::of(&QComboBox::activated), this, [this] {
        if (pick() != DatePick::Other) {
            emit pickWanted(pick());
        }
    });
}

void SearchBar::addPicks()
{
    const auto add = [this](const QString &text, DatePick pick) { m_pick->addItem(text, int(pick)); };
    add(tr("All"), DatePick::AllDates);
    add(tr("Today"), DatePick::Today);
    add(tr("Yesterday"), DatePick::Yesterday);
    add(tr("Last 7 days"), DatePick::Week);
    add(tr("Last 30 days"), DatePick::Month);
    add(tr("No date"), DatePick::NoDate);
    m_pick->insertSeparator(m_pick->count());
    add(tr("Arrived today"), DatePick::ArrivedToday);
}

void SearchBar::setShown(const QString &text, DatePick pick)
{
    if (m_text->text() != text) {
        m_text->setText(text);
    }
    offerOther(pick == DatePick::Other);
    m_pick->setCurrentIndex(m_pick->findData(int(pick)));
}

/// Nothing to choose, so it is there only while it is the case.
void SearchBar::offerOther(bool isShown)
{
    const int place = m_pick->findData(int(DatePick::Other));
    if (isShown && place < 0) {
        m_pick->addItem(tr("Other selection"), int(DatePick::Other));
    } else if (!isShown && place >= 0) {
        m_pick->removeItem(place);
    }
}

void SearchBar::setCount(int found, qint64 total)
{
    const QLocale locale;
    setBadge(tr("%1 of %2").arg(locale.toString(found), locale.toString(total)));
}

void SearchBar::setNote(const QString &note)
{
    setBadge(note);
}

/// Screen readers read it where it changes, without the focus.
void SearchBar::setBadge(const QString &text)
{
    if (m_badge->text() == text) {
        return;
    }
    m_badge->setText(text);
    m_badge->setAccessibleName(tr("Patients shown: %1").arg(text));
    QAccessibleEvent changed(m_badge, QAccessible::Alert);
    QAccessible::updateAccessibility(&changed);
}

QString SearchBar::text() const
{
    return m_text->text();
}

DatePick SearchBar::pick() const
{
    return DatePick(m_pick->currentData().toInt());
}

QString SearchBar::badge() const
{
    return m_badge->text();
}

void SearchBar::takeFocus()
{
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

bool SearchBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_text || event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Escape:
        if (!m_text->text().isEmpty()) {
            m_text->clear();
            emit textWanted({});
        }
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit rowsWanted();
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}
