#include <quillmarsh/platform/mappedfile.h>

#include "source/platform/files.h"
#include "source/platform/plainfiles.h"
#include "source/platform/win32/windows.h"

#include <limits>

#include <io.h>

namespace quillmarsh::platform
{

struct MappedFile::State
{
    FilePtr file;
    HANDLE mapping = nullptr;
    void *bytes = nullptr;
    std::uint64_t byteSize = 0;

    ~State()
    {
        if (bytes)
            UnmapViewOfFile(bytes);
        if (mapping)
            CloseHandle(mapping);
    }
};

MappedFile::MappedFile(AutoPtr<State> state) : state_(std::move(state)) {}

MappedFile::~MappedFile() = default;

AutoPtr<MappedFile> MappedFile::Open(string const &fileName, string &reason)
{
    auto state = std::make_unique<State>();
    state->file = OpenPlainFile(MakeStreamPath(fileName), state->byteSize);
    if (!state->file)
    {
        reason = "cannot be opened: " + DescribeLastFailure();
        return nullptr;
    }
    if (state->byteSize > std::numeric_limits<std::size_t>::max())
    {
        reason = "is too large to be mapped";
        return nullptr;
    }
    if (state->byteSize > 0)
    {
        auto const handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(state->file.get())));
        state->mapping = CreateFileMappingW(handle, nullptr, PAGE_READONLY, 0, 0, nullptr);
        if (state->mapping)
            state->bytes =
                MapViewOfFile(state->mapping, FILE_MAP_READ, 0, 0, static_cast<std::size_t>(state->byteSize));
        if (!state->bytes)
        {
            reason = "cannot be mapped: system error " + std::to_string(GetLastError());
            return nullptr;
        }
    }
    return AutoPtr<MappedFile>(new MappedFile(std::move(state)));
}

unsigned char const *MappedFile::GetBytes() const
{
    return static_cast<unsigned char const *>(state_->bytes);
}

std::uint64_t MappedFile::GetByteSize() const
{
    return state_->byteSize;
}

bool MappedFile::IsDamaged() const
{
    return false;
}

} // namespace quillmarsh::platform
