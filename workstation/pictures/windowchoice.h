#pragma once

#include "pixelframe.h"

#include <QCoreApplication>

/// A window by name, as a menu lists it.
struct NamedWindow
{
    QString name;
    WindowLevel window;
};

/**
 * Which window the preview shows images with: the one that each file proposes, an automatic one, or a fixed
 * one that was picked or dragged. A value.
 */
class WindowChoice
{
    Q_DECLARE_TR_FUNCTIONS(WindowChoice)

public:
    enum class Mode : quint8 { File, Automatic, Fixed };

    Mode mode() const { return m_mode; }
    void useFile() { m_mode = Mode::File; }
    void useAutomatic() { m_mode = Mode::Automatic; }
    void use(const WindowLevel &window);

    /// For a grey frame.
    WindowLevel of(const PixelFrame &frame) const;
    /// Changes the window that a frame is shown with by a drag, in shares of the values that the frame has.
    void drag(const PixelFrame &frame, double widthShare, double centreShare);

    /// Windows for the parts of the body, for computed tomography.
    static QVector<NamedWindow> tomographyWindows();

private:
    Mode m_mode = Mode::File;
    WindowLevel m_fixed;
};
