#include "descriptorstream.h"

#include "filecopy.h"

#include <dcmtk/dcmdata/dcerror.h>

namespace {

constexpr int mostWaiting = 64 * 1024;

} // namespace

OFCondition DescriptorConsumer::status() const
{
    return m_error == 0 ? EC_Normal : EC_InvalidStream;
}

offile_off_t DescriptorConsumer::avail() const
{
    return mostWaiting;
}

offile_off_t DescriptorConsumer::write(const void *bytes, offile_off_t size)
{
    m_waiting.append(static_cast<const char *>(bytes), int(size));
    if (m_waiting.size() >= mostWaiting) {
        flush();
    }
    return m_error == 0 ? size : 0;
}

void DescriptorConsumer::flush()
{
    if (m_error == 0) {
        m_error = writeAll(m_to, m_waiting.constData(), std::size_t(m_waiting.size()));
    }
    m_waiting.clear();
}
