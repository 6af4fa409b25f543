// A sink for shared streams that counts equal texts.
#ifndef QUILLMARSH_TESTS_SUPPORT_TEXT_COUNTER_H
#define QUILLMARSH_TESTS_SUPPORT_TEXT_COUNTER_H

#include <quillmarsh/basetools/sharedoutputstream.h>

#include <map>
#include <mutex>
#include <utility>

namespace quillmarsh::tests
{

/// Any thread may print to it.
class TextCounter : public TextSink
{
public:
    void OnText(std::string_view text, unsigned int type) override
    {
        std::scoped_lock const lock(lock_);
        ++counts_[std::to_string(type) + ":" + string(text)];
    }

    /// Returns the counts since the last call, by the type and the text: "0:text".
    std::map<string, unsigned int> Take()
    {
        std::scoped_lock const lock(lock_);
        return std::exchange(counts_, {});
    }

private:
    std::mutex lock_;
    std::map<string, unsigned int> counts_;
};

} // namespace quillmarsh::tests

#endif
