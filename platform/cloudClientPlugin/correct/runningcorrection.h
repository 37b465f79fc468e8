#pragma once

#include "cloudclientplugin_export.h"

#include <functional>

/**
 * Says to the whole program that patient data are being corrected, from its making to its end: what has begun
 * to be stored in a service must not be cut short by an end of the program or another index. GUI thread.
 */
class CLOUDCLIENTPLUGIN_EXPORT RunningCorrection
{
public:
    /// @param stop ends the correction soon, as far as it may still be stopped
    explicit RunningCorrection(std::function<void()> stop);
    ~RunningCorrection();
    RunningCorrection(const RunningCorrection &) = delete;
    RunningCorrection &operator=(const RunningCorrection &) = delete;

    static bool isAny();
    static void stopAll();

private:
    const std::function<void()> m_stop;
};
