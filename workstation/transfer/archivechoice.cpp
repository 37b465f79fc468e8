#include "archivechoice.h"

#include "archivemodel.h"
#include "archivetext.h"

Retrieval retrievalOf(const ArchiveModel &model, const QModelIndex &row, const Archive &archive)
{
    const QueryRecord record = model.recordOf(row);
    const RecordLevel level = model.levelOf(row).value_or(RecordLevel::Study);
    const bool isSeries = level == RecordLevel::Series;
    Retrieval retrieval;
    retrieval.archive = archive;
    retrieval.request.level = level;
    retrieval.request.patientId = record.value(QueryTag::patientId);
    retrieval.request.studyUid = record.value(QueryTag::studyUid);
    retrieval.request.seriesUid = record.value(QueryTag::seriesUid);
    retrieval.request.modalities =
        record.value(isSeries ? QueryTag::modality : QueryTag::modalitiesInStudy).split(QLatin1Char('\\'));
    retrieval.request.classes =
        record.value(QueryTag::classesInStudy).split(QLatin1Char('\\'), Qt::SkipEmptyParts);
    retrieval.expected =
        record.value(isSeries ? QueryTag::seriesInstances : QueryTag::studyInstances).toInt();
    retrieval.held = model.heldOf(row);
    retrieval.title = ArchiveText::titleOf(record, level);
    return retrieval;
}
