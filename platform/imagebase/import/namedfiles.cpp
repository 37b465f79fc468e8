#include "namedfiles.h"

#include "nativestatement.h"

NamedFiles::NamedFiles(const QSqlDatabase &db)
    : m_record(std::make_unique<NativeStatement>(db,
        // In two halves, each of which an index answers.
        QStringLiteral(
            "SELECT 1 FROM imageformat WHERE FilePath = ?1 AND IrradiationEventUID = 'copy' "
            "UNION ALL SELECT 1 FROM imageformat WHERE ifnull(SourcePath, FilePath) = ?1 LIMIT 1")))
{ }

NamedFiles::~NamedFiles() = default;

bool NamedFiles::contains(const QString &path)
{
    m_record->bind(0, path);
    const bool none = m_record->step() == NativeStatement::Step::Done;
    m_record->reset();
    return !none;
}
