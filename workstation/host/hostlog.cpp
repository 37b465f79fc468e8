#include "hostlog.h"

#include <QString>
#include <QtGlobal>

namespace {

constexpr char offscreen[] = "This plugin does not support";
constexpr char namedSlot[] = "QMetaObject::connectSlotsByName: No matching signal for on_";
QtMessageHandler before = nullptr;

void pass(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type != QtDebugMsg && !text.startsWith(QLatin1String(namedSlot))
        && !text.startsWith(QLatin1String(offscreen))) {
        before(type, context, text);
    }
}

} // namespace

void installHostLog()
{
    before = qInstallMessageHandler(pass);
}
