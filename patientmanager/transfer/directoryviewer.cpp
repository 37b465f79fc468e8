#include "directoryviewer.h"

#include <QDebug>
#include <QDir>
#include <QFileSystemModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSpacerItem>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

constexpr int minimumViewerWidth = 800;
constexpr int minimumViewerHeight = 400;
constexpr int spacerWidth = 40;
constexpr int spacerHeight = 20;

QPushButton *makeButton(const QString &text, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    // White in every theme, and so with a dark text.
    QPalette palette = button->palette();
    palette.setColor(QPalette::ButtonText, Qt::black);
    button->setPalette(palette);
    button->setStyleSheet(QStringLiteral("QPushButton{background-color:rgb(255, 255, 255);}"));
    return button;
}

} // namespace

DirectoryViewer::DirectoryViewer(QWidget *parent)
    : QDialog(parent, Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint)
    , model(new QFileSystemModel(this))
    , treeView(new QTreeView(this))
{
    buildTree();
    showCurrentFolder();
    buildLayout();
    setMinimumSize(minimumViewerWidth, minimumViewerHeight);
}

void DirectoryViewer::buildTree()
{
    model->setReadOnly(true);
    model->setFilter(QDir::Dirs | QDir::AllDirs | QDir::NoDotAndDotDot);
    model->setRootPath(QDir::currentPath());
    treeView->setModel(model);
    treeView->setAccessibleName(tr("Folders"));
    QHeaderView *header = treeView->header();
    header->setStretchLastSection(true);
    header->setSortIndicator(0, Qt::AscendingOrder);
    header->setSortIndicatorShown(true);
    // Names come later than the view asks for them: the column grows with what is listed.
    const auto fitNames = [this] { treeView->resizeColumnToContents(0); };
    connect(model, &QFileSystemModel::directoryLoaded, this, fitNames);
    connect(treeView, &QTreeView::expanded, this, fitNames);
}

void DirectoryViewer::showCurrentFolder()
{
    const QModelIndex current = model->index(QDir::currentPath());
    treeView->expand(current);
    treeView->scrollTo(current);
    treeView->resizeColumnToContents(0);
}

void DirectoryViewer::buildLayout()
{
    QPushButton *ok = makeButton(tr("确定"), this);
    QPushButton *cancel = makeButton(tr("取消"), this);
    auto *row = new QHBoxLayout;
    row->addItem(new QSpacerItem(spacerWidth, spacerHeight, QSizePolicy::Expanding, QSizePolicy::Minimum));
    row->addWidget(ok);
    row->addItem(new QSpacerItem(spacerWidth, spacerHeight, QSizePolicy::Fixed, QSizePolicy::Minimum));
    row->addWidget(cancel);
    auto *column = new QVBoxLayout;
    column->addWidget(treeView);
    column->addLayout(row);
    setLayout(column);
    connect(ok, &QPushButton::clicked, this, &DirectoryViewer::onSelectDirectory);
    connect(cancel, &QPushButton::clicked, this, &DirectoryViewer::onCancel);
}

void DirectoryViewer::onSelectDirectory()
{
    // Not the model's own fileInfo(): what lies two levels below the root has a doubled slash there.
    const QModelIndex current = treeView->currentIndex();
    const QFileInfo chosen = current.isValid() ? QFileInfo(model->filePath(current)) : QFileInfo();
    const QString path = chosen.path() + QLatin1Char('/') + chosen.fileName();
    qDebug() << path;
    if (path.size() >= 2) {
        emit selectPath(path);
    }
    close();
}

void DirectoryViewer::onCancel()
{
    close();
}
