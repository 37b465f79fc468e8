#include "treeresult.h"

#include "attributes.h"
#include "columncaptions.h"
#include "qpatients.h"
#include "qpatienttreemodel.h"

namespace {

QStringList captionsOf(RecordLevel level, const QStringList &columns)
{
    const QHash<QString, QString> captions = ColumnCaptions::of(QLatin1String(recordTableName(level)));
    QStringList texts;
    for (const QString &column : columns) {
        texts.append(captions.value(column, column));
    }
    return texts;
}

} // namespace

TreeResult::TreeResult(QPatients *patients, QObject *parent)
{
    const QStringList ofPatients = patients->getPatientTitleList();
    const QStringList ofStudies = patients->getStudyTitleList();
    const QStringList ofSeries = patients->getSeriesTitleList();
    const QStringList columns = ofPatients + ofStudies + ofSeries;
    model = new QPatientTreeModel(parent, columns);
    model->setPatients(patients, columns);
    patientColumns = ofPatients.size();
    captions = captionsOf(RecordLevel::Patient, ofPatients) + captionsOf(RecordLevel::Study, ofStudies)
        + captionsOf(RecordLevel::Series, ofSeries);
    // Each level begins with its key.
    if (patients->isStudyPkHidden()) {
        hiddenColumns.insert(ofPatients.size());
    }
    if (patients->isSeriesPkHidden()) {
        hiddenColumns.insert(ofPatients.size() + ofStudies.size());
    }
}
