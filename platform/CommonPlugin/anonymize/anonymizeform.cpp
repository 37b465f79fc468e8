#include "anonymizeform.h"

#include "recordpicker.h"

#include <QSqlQuery>
#include <QVBoxLayout>

struct AnonymizeForm::Private
{
    RecordPicker *picker = nullptr;
};

namespace {

/// The studies that records stand for.
QList<qlonglong> studiesOf(const QString &tableName, const QList<qlonglong> &keys)
{
    QString statement;
    if (tableName == QLatin1String("patient")) {
        statement = QStringLiteral("SELECT pk FROM generalstudy WHERE patient_fk = ?");
    } else if (tableName == QLatin1String("generalseries") || tableName == QLatin1String("series")) {
        statement = QStringLiteral("SELECT study_fk FROM generalseries WHERE pk = ?");
    } else {
        return keys;
    }
    QList<qlonglong> studies;
    QSqlQuery query;
    query.prepare(statement);
    for (const qlonglong key : keys) {
        query.bindValue(0, key);
        query.exec();
        while (query.next()) {
            studies.append(query.value(0).toLongLong());
        }
    }
    return studies;
}

} // namespace

AnonymizeForm::AnonymizeForm(QWidget *parent)
    : QWidget(parent)
    , d(new Private)
{
    setWindowTitle(tr("Anonymise"));
    d->picker = new RecordPicker(this);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(d->picker);
}

AnonymizeForm::~AnonymizeForm() = default;

void AnonymizeForm::choose(const QString &tableName, const QList<qlonglong> &keys)
{
    d->picker->setTicked(studiesOf(tableName, keys));
}
