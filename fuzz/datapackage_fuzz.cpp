// Data packages of each kind: reading any bytes ends, and a payload that was read stays the same when it is written and
// read again.
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/dataobjects/imageio.h>
#include <quillmarsh/dataobjects/signalio.h>
#include <quillmarsh/dataobjects/volumeio.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>

using namespace quillmarsh;

namespace
{

bool Read(DataPackage &package, string const &bytes)
{
    std::istringstream in(bytes);
    try
    {
        package.Deserialize(in);
        return true;
    }
    catch (Exception const &)
    {
    }
    catch (std::ios_base::failure const &)
    {
    }
    return false;
}

string Write(DataPackage const &package)
{
    std::ostringstream out;
    package.Serialize(out);
    return out.str();
}

template<typename Package>
void Run(string const &bytes)
{
    Package package;
    if (!Read(package, bytes))
    {
        if (package.GetPayload(false))
            std::abort();
        return;
    }
    string const written = Write(package);
    if (written.size() > bytes.size() || !Read(package, written) || Write(package) != written)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    string const bytes(reinterpret_cast<char const *>(data), size);
    Run<DataPackageSignal>(bytes);
    Run<DataPackageImage>(bytes);
    Run<DataPackageVolume>(bytes);
    return 0;
}
