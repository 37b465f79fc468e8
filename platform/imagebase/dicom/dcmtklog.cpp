#include "dcmtklog.h"

#include <QtGlobal>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/oflog/oflog.h>

void silenceDcmtk()
{
    static const bool silenced = [] {
        for (const char *logger :
            {"dcmtk.dcmdata", "dcmtk.dcmjpeg", "dcmtk.dcmjpls", "dcmtk.dcmnet", "dcmtk.ofstd"}) {
            OFLog::getLogger(logger).setLogLevel(OFLogger::OFF_LOG_LEVEL);
        }
        return true;
    }();
    Q_UNUSED(silenced)
}
