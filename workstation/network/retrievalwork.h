#pragma once

#include "queryscu.h"
#include "retrieval.h"

#include <QThread>

#include <memory>
#include <mutex>

class StoreProvider;

/**
 * One retrieval on a thread of its own. Where the archive may choose the way, what C-GET did not bring is
 * asked for once more by C-MOVE: all of it where the archive does not serve C-GET, else just what is missing.
 * GUI thread; the destructor waits for the end.
 */
class RetrievalWork
{
public:
    /// @param provider takes the objects; outlives the work @param isListening whether we can be sent to
    RetrievalWork(const Retrieval &wanted, const StoreProvider *provider, bool isListening);
    ~RetrievalWork();
    RetrievalWork(const RetrievalWork &) = delete;
    RetrievalWork &operator=(const RetrievalWork &) = delete;

    void start();
    /// How it stands.
    Retrieval snapshot();
    /// The archive is asked to end.
    void cancel();
    /// It ends within milliseconds.
    void abort();

private:
    void run();
    RetrieveResult fetch(bool &lacksReceiver);
    RetrieveResult moveAll(const RetrieveResult &got);
    RetrieveResult moveRest(RetrieveResult got);
    RetrieveResult move(const RetrieveRequest &request, const RetrieveProgress &before);
    void setUsed(RetrieveMethod method);
    void setProgress(const RetrieveProgress &now);

    std::mutex m_mutex; ///< of m_retrieval while the thread runs
    Retrieval m_retrieval;
    const StoreProvider *const m_provider;
    const bool m_isListening;
    const ScuOptions m_options;
    RetrieveScu m_scu;
    QueryScu m_query; ///< for the places of what is missing
    RetrieveProgress m_before; ///< what came before the request that runs; for the thread
    std::unique_ptr<QThread> m_thread;
};
