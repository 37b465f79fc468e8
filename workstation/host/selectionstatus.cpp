#include "selectionstatus.h"

#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"
#include "recordform.h"

#include <QItemSelectionModel>
#include <QLocale>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QVariant>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr RecordLevel levels[]{
    RecordLevel::Patient, RecordLevel::Study, RecordLevel::Series, RecordLevel::Image};

/// How many records of a pick are looked for each time that the index has changed.
constexpr int mostKeysChecked = 1000;

bool areThere(RecordLevel level, const QList<qlonglong> &keys)
{
    QSqlQuery query(QSqlDatabase::database());
    query.prepare(
        QStringLiteral("SELECT count(*) FROM %1 WHERE pk = ?").arg(QLatin1String(recordTableName(level))));
    return std::all_of(keys.begin(), keys.end(), [&query](qlonglong key) {
        query.bindValue(0, key);
        return !query.exec() || !query.next() || query.value(0).toInt() > 0;
    });
}

} // namespace

bool RecordSelection::isOfSameRecords(const RecordSelection &other) const
{
    const auto setOf = [](const QList<qlonglong> &list) { return QSet<qlonglong>(list.begin(), list.end()); };
    return level == other.level && setOf(keys) == setOf(other.keys);
}

QString RecordSelection::text() const
{
    if (isEmpty()) {
        return {};
    }
    const bool one = keys.size() == 1;
    const QString number = QLocale().toString(keys.size());
    switch (level) {
    case RecordLevel::Patient:
        return (one ? SelectionStatus::tr("%1 patient") : SelectionStatus::tr("%1 patients")).arg(number);
    case RecordLevel::Study:
        return (one ? SelectionStatus::tr("%1 study") : SelectionStatus::tr("%1 studies")).arg(number);
    case RecordLevel::Series:
        return SelectionStatus::tr("%1 series").arg(number);
    case RecordLevel::Image:
        return (one ? SelectionStatus::tr("%1 image") : SelectionStatus::tr("%1 images")).arg(number);
    }
    return {};
}

SelectionStatus::SelectionStatus(
    const PatientManagerMainWindow *library, QVector<RecordForm *> forms, QObject *parent)
    : QObject(parent)
    , m_library(library)
    , m_forms(std::move(forms))
{
    m_change.setSingleShot(true);
    m_change.setInterval(0);
    connect(&m_change, &QTimer::timeout, this, &SelectionStatus::changed);
    for (RecordForm *form : m_forms) {
        watch(form);
    }
    watchTree();
}

/// A click lists the parts of one record, and is the first half of the double click that picks it. The tree's
/// buttons list everything, which selects nothing.
void SelectionStatus::watchTree()
{
    const PatientTreeForm *tree = m_library->getPatientTreeForm();
    const auto listed = [this](const QList<qlonglong> &keys, const QString &table) {
        const std::optional<RecordLevel> level = recordLevelOf(table);
        m_isFromTree = false;
        m_listed = level ? RecordSelection{*level, keys} : RecordSelection();
        m_change.start();
    };
    connect(tree, &PatientTreeForm::selectPatientPks, this, listed);
    connect(tree, &PatientTreeForm::selectStudyPks, this, listed);
    connect(tree, &PatientTreeForm::selectSeriesPks, this, listed);
    connect(tree, &PatientTreeForm::selectSeriesPk, this, listed);
    connect(tree, &PatientTreeForm::selectMutiPK, this, [this] {
        m_isFromTree = true;
        m_change.start();
    });
}

/// A reset says nothing of the selection that it clears.
void SelectionStatus::watch(RecordForm *form)
{
    const auto report = [this] {
        m_isFromTree = false;
        m_listed = {};
        m_change.start();
    };
    connect(form, &RecordForm::selectPK, this, report);
    connect(form, &RecordForm::selectMutiPK, this, report);
    connect(form->view()->selectionModel(), &QItemSelectionModel::selectionChanged, &m_change,
        qOverload<>(&QTimer::start));
    connect(form->tableModel(), &QAbstractItemModel::modelReset, &m_change, qOverload<>(&QTimer::start));
}

bool SelectionStatus::hasSelection(int level) const
{
    return m_forms[level]->view()->selectionModel()->hasSelection();
}

RecordSelection SelectionStatus::current() const
{
    const std::optional<RecordLevel> level = recordLevelOf(m_library->selectedTable());
    const bool isOfImages = level == RecordLevel::Image && hasSelection(int(RecordLevel::Image));
    if (level && (m_isFromTree || isOfImages)) {
        return {*level, m_library->selectedKeys()};
    }
    return m_listed.isEmpty() ? forActions() : m_listed;
}

void SelectionStatus::leaveTree()
{
    if (!m_isFromTree && m_listed.isEmpty()) {
        return;
    }
    int level = int(RecordLevel::Image);
    while (level > int(RecordLevel::Patient) && !hasSelection(level)) {
        --level;
    }
    m_forms[level]->selectList();
}

void SelectionStatus::dropGone()
{
    if (!m_isFromTree && m_listed.isEmpty()) {
        return;
    }
    const RecordSelection picked = current();
    if (!areThere(picked.level, picked.keys.mid(0, mostKeysChecked))) {
        leaveTree();
    }
}

RecordSelection SelectionStatus::forActions() const
{
    for (int level = int(RecordLevel::Series); level >= 0; --level) {
        if (hasSelection(level)) {
            return {levels[level], m_forms[level]->selectedKeys()};
        }
    }
    return {};
}
