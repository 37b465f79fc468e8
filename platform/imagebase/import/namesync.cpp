#include "namesync.h"

#include <QByteArray>
#include <QFile>
#include <QList>

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

namespace {

constexpr long xfsMagic = 0x58465342; ///< which the system's header leaves out

/// Whether a device is mounted by one of these drivers.
bool isMountedAs(dev_t device, const QList<QByteArray> &drivers)
{
    // Number, parent, device, root, place, options, further fields up to a dash, driver.
    constexpr int deviceField = 2;
    const QByteArray number = QByteArray::number(major(device)) + ':' + QByteArray::number(minor(device));
    QFile mounts(QStringLiteral("/proc/self/mountinfo"));
    if (!mounts.open(QIODevice::ReadOnly)) {
        return false;
    }
    for (const QByteArray &line : mounts.readAll().split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        const int dash = fields.indexOf("-");
        if (fields.value(deviceField) == number && dash > 0) {
            return drivers.contains(fields.value(dash + 1));
        }
    }
    return false;
}

} // namespace

bool syncsNames(int descriptor)
{
    struct statfs system = {};
    struct stat status = {};
    if (fstatfs(descriptor, &system) != 0 || fstat(descriptor, &status) != 0) {
        return false;
    }
    const auto type = static_cast<long>(system.f_type);
    // They have one journal, or, as ext4 does without one, sync what is above a new name with it. The number
    // of ext4 is that of ext2, too, whose own driver syncs no more than it is told to.
    return type == BTRFS_SUPER_MAGIC || type == xfsMagic || type == TMPFS_MAGIC
        || (type == EXT4_SUPER_MAGIC && isMountedAs(status.st_dev, {"ext3", "ext4"}));
}
