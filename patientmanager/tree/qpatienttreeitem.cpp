#include "qpatienttreeitem.h"

#include "qpatient.h"
#include "qseries.h"
#include "qstudy.h"
#include "treecolumns.h"

namespace {

QList<QVariant> variants(const QStringList &texts)
{
    QList<QVariant> values;
    values.reserve(texts.size());
    for (const QString &text : texts) {
        values.append(text);
    }
    return values;
}

/// Those of the parent wherever it has the same names: a tree has one.
TreeColumns *sharedColumns(const TreeColumns *parents, const QStringList &names)
{
    return parents && parents->names() == names ? const_cast<TreeColumns *>(parents) : new TreeColumns(names);
}

} // namespace

QPatientTreeItem::QPatientTreeItem(
    const QList<QVariant> &values, QPatientTreeItem *parent, const QStringList &columns)
    : m_values(values)
    , m_columns(sharedColumns(parent ? parent->m_columns.constData() : nullptr, columns))
    , m_parent(parent)
{ }

QPatientTreeItem::QPatientTreeItem(
    const QStringList &values, QPatientTreeItem *parent, const QStringList &columns)
    : QPatientTreeItem(variants(values), parent, columns)
{ }

QPatientTreeItem::QPatientTreeItem(
    const IndexRecord *record, QPatientTreeItem *parent, const QStringList &columns)
    : QPatientTreeItem(QList<QVariant>(), parent, columns)
{
    m_record = record;
}

QPatientTreeItem::QPatientTreeItem(
    const QPatient *patient, QPatientTreeItem *parent, const QStringList &columns)
    : QPatientTreeItem(static_cast<const IndexRecord *>(patient), parent, columns)
{
    const QList<QStudy *> studies = patient->getStudys();
    m_children.reserve(studies.size());
    for (const QStudy *study : studies) {
        appendChild(new QPatientTreeItem(study, this, columns));
    }
}

QPatientTreeItem::QPatientTreeItem(const QStudy *study, QPatientTreeItem *parent, const QStringList &columns)
    : QPatientTreeItem(static_cast<const IndexRecord *>(study), parent, columns)
{
    const QList<QSeries *> series = study->getSeries();
    m_children.reserve(series.size());
    for (const QSeries *one : series) {
        appendChild(new QPatientTreeItem(one, this, columns));
    }
}

QPatientTreeItem::QPatientTreeItem(
    const QSeries *series, QPatientTreeItem *parent, const QStringList &columns)
    : QPatientTreeItem(static_cast<const IndexRecord *>(series), parent, columns)
{ }

QPatientTreeItem::QPatientTreeItem(const QPatientTreeItem &other)
    : m_children(other.m_children)
    , m_values(other.m_values)
    , m_columns(other.m_columns)
    , m_parent(other.m_parent)
    , m_record(other.m_record)
    , m_row(other.m_row)
    , m_ownsChildren(false)
{ }

QPatientTreeItem &QPatientTreeItem::operator=(const QPatientTreeItem &other)
{
    if (this != &other) {
        const QPatientTreeItem copy(other); // may hang below what is deleted next
        if (m_ownsChildren) {
            qDeleteAll(m_children);
        }
        m_children = copy.m_children;
        m_values = copy.m_values;
        m_columns = copy.m_columns;
        m_parent = copy.m_parent;
        m_record = copy.m_record;
        m_row = copy.m_row;
        m_ownsChildren = false;
    }
    return *this;
}

QPatientTreeItem::~QPatientTreeItem()
{
    if (m_ownsChildren) {
        qDeleteAll(m_children);
    }
}

void QPatientTreeItem::appendChild(QPatientTreeItem *child)
{
    child->m_row = m_children.size();
    m_children.append(child);
}

void QPatientTreeItem::remove(QPatientTreeItem *child)
{
    m_children.removeOne(child);
}

QPatientTreeItem *QPatientTreeItem::takeLast()
{
    return m_children.isEmpty() ? nullptr : m_children.takeLast();
}

QPatientTreeItem *QPatientTreeItem::child(int row) const
{
    return m_children.value(row);
}

int QPatientTreeItem::childCount() const
{
    return m_children.size();
}

int QPatientTreeItem::columnCount() const
{
    return m_record ? m_columns->count() : m_values.size();
}

QVariant QPatientTreeItem::data(int column) const
{
    if (column < 0 || column >= columnCount()) {
        return {};
    }
    return m_record ? m_columns->value(column, m_record->level(), *m_record) : m_values.at(column);
}

int QPatientTreeItem::row() const
{
    if (!m_parent) {
        return 0;
    }
    if (m_parent->child(m_row) != this) {
        m_row = m_parent->m_children.indexOf(const_cast<QPatientTreeItem *>(this));
    }
    return m_row;
}

QPatientTreeItem *QPatientTreeItem::parentItem() const
{
    return m_parent;
}

const QPatient *QPatientTreeItem::getPatient() const
{
    const bool isPatient = m_record && m_record->level() == RecordLevel::Patient;
    return isPatient ? static_cast<const QPatient *>(m_record) : nullptr;
}

const QStudy *QPatientTreeItem::getStudy() const
{
    const bool isStudy = m_record && m_record->level() == RecordLevel::Study;
    return isStudy ? static_cast<const QStudy *>(m_record) : nullptr;
}

const QSeries *QPatientTreeItem::getSeries() const
{
    const bool isSeries = m_record && m_record->level() == RecordLevel::Series;
    return isSeries ? static_cast<const QSeries *>(m_record) : nullptr;
}
