#pragma once

#include <QLockFile>
#include <QString>
#include <QStringList>

#include <memory>

/**
 * A hidden folder beside what an export makes, in which it grows: only what is whole leaves it for its place,
 * by a rename. It goes with this object; that of a program that was killed goes when the next export comes to
 * the same folder.
 */
class ExportStage
{
public:
    /// Sweeps the folder and makes a stage in it. error() tells whether that went well.
    explicit ExportStage(QString folder);
    ~ExportStage();
    ExportStage(const ExportStage &) = delete;
    ExportStage &operator=(const ExportStage &) = delete;

    /// errno, 0 where the stage is there.
    int error() const { return m_error; }
    QString path(const QString &name) const;
    /// Makes the folders above a file of the stage. @return errno, 0 for success
    int makeFolderOf(const QString &name) const;
    /// Renames a file of the stage to the same name in the folder. @return errno, 0 for success, EEXIST where
    /// something is there that may not be replaced
    int moveOut(const QString &name, bool replace) const;
    /// The same for several, all of them or none, whenever it ends: what a kill let out without the others
    /// goes with its stage. @return errno, 0 for success
    int moveAllOut(const QStringList &names, bool replace) const;
    /// Has the system write out what is in the file system of the folder. @return errno, 0 for success
    int sync() const;

private:
    static void sweep(const QString &folder);
    static void takeBackPart(const QString &folder, const QString &stage);
    static void takeBack(const QStringList &names, const QString &folder, const QString &stage);

    const QString m_folder;
    QString m_stage;
    std::unique_ptr<QLockFile> m_lock;
    int m_error = 0;
    mutable QString m_lastFolder; ///< that was made last
};
