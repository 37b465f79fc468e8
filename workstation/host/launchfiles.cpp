#include "launchfiles.h"

#include "indexconnection.h"
#include "selectionstatus.h"

LaunchFiles::LaunchFiles(QObject *parent)
    : QObject(parent)
{ }

void LaunchFiles::start(const QString &indexPath, const RecordSelection &selection)
{
    m_reader = std::thread([this, indexPath, selection] {
        {
            const IndexConnection index(indexPath);
            m_files = recordFiles(index.database(), selection.level, selection.keys, &m_stop);
        }
        emit finished(); // queued to receivers on the GUI thread
    });
}

LaunchFiles::~LaunchFiles()
{
    m_stop = true;
    if (m_reader.joinable()) {
        m_reader.join();
    }
}
