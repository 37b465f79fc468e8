#pragma once

#include "seriesentry.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class PatientManagerMainWindow;
class PreviewWindow;
class QModelIndex;
class RecordForm;
class ThumbnailView;

/**
 * Keeps the pictures beside the tables in step with what is selected: fills the body of the query panel with
 * thumbnails, tells the library to hand the selected patient out, and opens the preview.
 *
 * Acts on selections that were reported only: a live refresh or an import changes neither the chosen patient
 * nor what is shown, and merely adds new series. Owned by its parent; GUI thread.
 */
class PictureController : public QObject
{
    Q_OBJECT

public:
    /// Objects are made of one record, and of more up to this size; beyond it the pictures alone follow.
    static constexpr int mostKeysForObjects = 200;
    static constexpr int mostImagesForObjects = 10'000;

    /// @param body what the thumbnails fill; without a layout of its own, or with an empty one
    PictureController(PatientManagerMainWindow *library, QWidget *body, QObject *parent);
    ~PictureController() override;

    ThumbnailView *view() const { return m_view; }
    /// Whether what was selected last is shown with all its pictures.
    bool isSettled() const;
    /// The preview that was opened last; null where it is closed.
    PreviewWindow *preview() const;
    /// Asked before a click on a picture would fill tables. Yes at first.
    void setGuard(const std::function<bool()> &mayFillTables) { m_mayFillTables = mayFillTables; }

public slots:
    /// The index has changed: series that are new come in, those that are gone leave.
    void onIndexChanged();
    void openPreview(qlonglong series);
    void openFiles(const QStringList &files);

signals:
    /// isSettled() holds again.
    void settled();

private:
    void follow();
    void showListed(const QList<qlonglong> &keys, const QString &table);
    void onReported(const QList<qlonglong> &keys, const QString &table);
    void apply();
    bool mayBecomeObjects() const;
    void showSelected();
    PreviewWindow *takePreview();
    void showPreview();
    void chooseSeries(qlonglong series);
    bool selectRow(RecordForm *form, qlonglong key, bool report);

    PatientManagerMainWindow *const m_library;
    ThumbnailView *const m_view;
    QPointer<PreviewWindow> m_preview;
    std::function<bool()> m_mayFillTables = [] { return true; };
    QTimer m_change; ///< gathers what is reported at a time
    QTimer m_refresh; ///< the same for changes of the index
    bool m_isChoosing = false; ///< a click on a picture is being carried out
    bool m_keepsPictures = false; ///< the reported selection came from such a click
};
