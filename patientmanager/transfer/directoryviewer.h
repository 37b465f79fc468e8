#pragma once

#include <QDialog>

class QFileSystemModel;
class QTreeView;

/**
 * Asks for the folder of an import: a tree of the folders that this computer has, opened at the working
 * directory. Says the choice with selectPath() and closes; it imports nothing itself. Owned by whoever made
 * it; GUI thread.
 */
class DirectoryViewer : public QDialog
{
    Q_OBJECT

public:
    explicit DirectoryViewer(QWidget *parent = nullptr);

public slots:
    /// Takes the tree's current folder, if it has one, and closes in every case.
    void onSelectDirectory();
    void onCancel();

signals:
    /// The folder's parent, "/" and its name: a folder right below the root starts with "//", the root itself
    /// is "//".
    void selectPath(QString path);

private:
    void buildTree();
    void buildLayout();
    void showCurrentFolder();

    QFileSystemModel *model;
    QTreeView *treeView;
};
