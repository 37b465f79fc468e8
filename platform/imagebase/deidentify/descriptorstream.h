#pragma once

#include <QByteArray>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcostrma.h>

/// Where DescriptorStream's bytes go; knows what the system refused.
class DescriptorConsumer : public DcmConsumer
{
public:
    explicit DescriptorConsumer(int to)
        : m_to(to)
    { }

    int error() const { return m_error; }
    OFBool good() const override { return m_error == 0; }
    OFCondition status() const override;
    OFBool isFlushed() const override { return m_waiting.isEmpty(); }
    offile_off_t avail() const override;
    offile_off_t write(const void *bytes, offile_off_t size) override;
    void flush() override;

private:
    const int m_to;
    int m_error = 0;
    QByteArray m_waiting;
};

/// DCMTK's output into an open file that stays open. Unlike DCMTK's own it tells, after flush(), whether all
/// has been taken.
class DescriptorStream : public DcmOutputStream
{
public:
    explicit DescriptorStream(DescriptorConsumer *consumer)
        : DcmOutputStream(consumer)
    { }
};
