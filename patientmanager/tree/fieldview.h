#pragma once

#include <QListView>

/// A list of which several rows can be selected, where typing letters goes to a row and selects nothing.
class FieldView : public QListView
{
    Q_OBJECT

public:
    using QListView::QListView;

    void keyboardSearch(const QString &search) override;
};
