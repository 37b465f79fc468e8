#pragma once

#include "commonplugin_export.h"

#include <QWidget>

class FieldPage;
class QTabWidget;

/**
 * Chooses the columns that the record tables show: a page for each table.
 *
 * Each change is written at once into the field-configuration tables of the index, on the default connection,
 * and told by updateFieldHeader(). Deletes itself when closed. GUI thread.
 */
class COMMONPLUGIN_EXPORT selectHideForm : public QWidget
{
    Q_OBJECT

public:
    /// @param page the page shown first: 0 patients, 1 studies, 2 series, 3 images
    explicit selectHideForm(QWidget *parent, int page);

signals:
    /// The field configuration has changed.
    void updateFieldHeader();

private:
    void build();

    QTabWidget *m_pages;
};
