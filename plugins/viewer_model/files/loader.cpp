#include "loader.h"

#include "failures.h"
#include "loading.h"

#include <quillmarsh/basetools/filesystem.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <thread>

namespace viewer
{

using namespace quillmarsh;

namespace
{

/// Files that are kept, whatever their size.
constexpr std::size_t s_maxKept = 64;
/// A file that changes while it is loaded is tried this often.
constexpr unsigned int s_maxTries = 3;

/// While shown files take more than the cache may have, those that nobody shows any more are looked for this often.
constexpr auto s_trimInterval = std::chrono::seconds(1);

/// What came of reading a file.
struct Fetched
{
    LoadedPtr loaded;
    FileStamp stamp;
    string failure;
};

/// Loads a file, again if it changes in the meantime.
Fetched Fetch(string const &fileName)
{
    for (unsigned int i = 1;; ++i)
    {
        FileStamp const stamp = GetFileStamp(fileName);
        try
        {
            return {LoadContent(fileName), stamp, ""};
        }
        catch (...)
        {
            string failure = DescribeException();
            FileStamp const now = GetFileStamp(fileName);
            if (now != stamp && i < s_maxTries)
                continue;
            string const place = fileName + ": ";
            if (failure.starts_with(place))
                failure.erase(0, place.size());
            string const changed = now == stamp         ? ""
                                   : now == FileStamp() ? "vanished while it was loaded: "
                                                        : "changed while it was loaded: ";
            failure.insert(0, place + changed);
            return {nullptr, stamp, failure};
        }
    }
}

} // namespace

FileStamp GetFileStamp(string const &fileName)
{
    std::filesystem::path const path = file_system::GetStreamPath(fileName);
    std::error_code error;
    FileStamp stamp;
    stamp.byteSize = std::filesystem::file_size(path, error);
    if (error)
        return {};
    stamp.time = std::filesystem::last_write_time(path, error).time_since_epoch().count();
    return error ? FileStamp() : stamp;
}

struct Loader::State
{
    enum class ePhase
    {
        e_content,
        e_levels
    };

    /// A call of Load() that has not got its last result.
    struct Request
    {
        string fileName;
        unsigned int number;
        ePhase phase = ePhase::e_content;
        bool isRunning = false;
        LoadedPtr loaded = nullptr;
        FileStamp stamp = {};
    };

    /// A file that was loaded. `time` orders them by their last use; previews leave files of time 0, which go first.
    struct Kept
    {
        LoadedPtr loaded;
        FileStamp stamp;
        std::uint64_t time;
    };

    using Lock = std::unique_lock<std::mutex>;

    State(std::function<void()> wakeFrame, std::uint64_t byteSize) : wake(std::move(wakeFrame)), cacheByteSize(byteSize)
    {
        // The second thread leaves everything else alone, so that Load() never waits for a file that is read ahead.
        for (std::size_t i = 0; i < threads.size(); ++i)
            threads[i] = std::thread([this, i] { Run(i == 0); });
    }

    ~State()
    {
        {
            std::lock_guard const lock(mutex);
            isEnding = true;
        }
        changed.notify_all();
        for (std::thread &thread : threads)
            thread.join();
    }

    void Run(bool doesAll)
    {
        Lock lock(mutex);
        while (!isEnding)
        {
            if (RunOne(lock, doesAll))
                continue;
            ++numIdle;
            // Nobody tells that a file is no longer shown.
            if (CountKept() > cacheByteSize)
                changed.wait_for(lock, s_trimInterval);
            else
                changed.wait(lock);
            --numIdle;
        }
    }

    /// Does the most urgent work; false if there is none.
    bool RunOne(Lock &lock, bool doesAll)
    {
        if (Request const *const request = FindRequest(ePhase::e_content))
            LoadRequest(lock, request->number);
        else if (Request const *const levels = FindRequest(ePhase::e_levels))
            CompleteRequest(lock, levels->number);
        else if (string name; doesAll && TakeName(previews, name))
            PreviewOne(lock, name);
        else if (doesAll && TakeName(ahead, name))
            ReadOneAhead(lock, name);
        else
            return DropKept(lock);
        DropKept(lock);
        return true;
    }

    /// Returns the newest request that waits for this, and whose file nobody reads.
    Request const *FindRequest(ePhase phase) const
    {
        auto const found = std::find_if(requests.begin(), requests.end(),
                                        [&](Request const &r)
                                        { return r.phase == phase && !r.isRunning && !reading.contains(r.fileName); });
        return found == requests.end() ? nullptr : &*found;
    }

    Request *FindNumber(unsigned int number)
    {
        auto const found =
            std::find_if(requests.begin(), requests.end(), [&](Request const &r) { return r.number == number; });
        return found == requests.end() ? nullptr : &*found;
    }

    void EraseNumber(unsigned int number)
    {
        std::erase_if(requests, [&](Request const &request) { return request.number == number; });
    }

    /// Takes the first file that nobody reads off a list.
    bool TakeName(std::deque<string> &names, string &name)
    {
        auto const found =
            std::find_if(names.begin(), names.end(), [&](string const &n) { return !reading.contains(n); });
        if (found == names.end())
            return false;
        name = *found;
        names.erase(found);
        return true;
    }

    void AddResult(Lock &lock, LoadResult result)
    {
        results.push_back(std::move(result));
        lock.unlock();
        wake();
        lock.lock();
    }

    /// Returns a file that is kept, if it has not changed, or reads it.
    Fetched Get(Lock &lock, string const &fileName, bool isForPreview)
    {
        reading.insert(fileName);
        auto const found = kept.find(fileName);
        Kept const known = found == kept.end() ? Kept() : found->second;
        lock.unlock();
        Fetched fetched = {known.loaded, known.stamp, ""};
        bool const isFresh = !known.loaded || known.stamp != GetFileStamp(fileName);
        if (isFresh)
            fetched = Fetch(fileName);
        lock.lock();
        reading.erase(fileName);
        changed.notify_all();
        if (isFresh && fetched.loaded)
            kept[fileName] = {fetched.loaded, fetched.stamp, isForPreview ? 0 : ++time};
        else if (isFresh)
            kept.erase(fileName);
        return fetched;
    }

    /// Puts a complete content in place of the one that is kept.
    void KeepComplete(string const &fileName, LoadedPtr const &loaded)
    {
        if (auto const found = kept.find(fileName);
            found != kept.end() && found->second.loaded->content == loaded->content)
        {
            found->second.loaded = loaded;
            found->second.time = ++time;
        }
    }

    void LoadRequest(Lock &lock, unsigned int number)
    {
        Request *request = FindNumber(number);
        request->isRunning = true;
        string const fileName = request->fileName;
        Fetched const fetched = Get(lock, fileName, false);
        request = FindNumber(number);
        if (!request)
            return;
        request->isRunning = false;
        if (!fetched.loaded)
        {
            EraseNumber(number);
            AddResult(lock, {LoadResult::ePart::e_failed, fileName, nullptr, fetched.stamp, fetched.failure});
        }
        else
            AddContent(lock, *request, fetched.loaded, fetched.stamp);
    }

    /// Tells of a content; its levels come next, if they are missing.
    void AddContent(Lock &lock, Request &request, LoadedPtr const &loaded, FileStamp const &stamp)
    {
        string const fileName = request.fileName;
        bool const isComplete = IsComplete(*loaded);
        request.phase = ePhase::e_levels;
        request.loaded = loaded;
        request.stamp = stamp;
        if (isComplete)
            EraseNumber(request.number);
        changed.notify_all();
        AddResult(lock,
                  {isComplete ? LoadResult::ePart::e_levels : LoadResult::ePart::e_content, fileName, loaded, stamp});
    }

    /// True when work on levels has to give way.
    bool IsUrgent() const
    {
        auto const isWaiting = [](Request const &r) { return r.phase == ePhase::e_content && !r.isRunning; };
        return isEnding || std::count_if(requests.begin(), requests.end(), isWaiting) > std::ptrdiff_t(numIdle);
    }

    void CompleteRequest(Lock &lock, unsigned int number)
    {
        Request *request = FindNumber(number);
        request->isRunning = true;
        LoadedPtr const loaded = request->loaded;
        string const fileName = request->fileName;
        lock.unlock();
        LoadedPtr const complete = Complete(*loaded,
                                            [&](double)
                                            {
                                                std::lock_guard const guard(mutex);
                                                return FindNumber(number) && !IsUrgent();
                                            });
        lock.lock();
        if (complete)
            KeepComplete(fileName, complete);
        request = FindNumber(number);
        if (!request)
            return;
        request->isRunning = false;
        if (!complete)
            return;
        FileStamp const stamp = request->stamp;
        EraseNumber(number);
        AddResult(lock, {LoadResult::ePart::e_levels, fileName, complete, stamp});
    }

    void PreviewOne(Lock &lock, string const &fileName)
    {
        Fetched const fetched = Get(lock, fileName, true);
        lock.unlock();
        LoadResult result = {LoadResult::ePart::e_failed, fileName, nullptr, fetched.stamp, fetched.failure};
        if (fetched.loaded)
        {
            auto preview = std::make_shared<Preview>();
            try
            {
                preview->picture = MakePreviewPicture(*fetched.loaded->content);
            }
            catch (...)
            {
                // A list shows the file without a picture.
                preview->picture = nullptr;
            }
            result.part = LoadResult::ePart::e_preview;
            result.loaded = fetched.loaded;
            result.preview = preview;
        }
        lock.lock();
        AddResult(lock, std::move(result));
    }

    void ReadOneAhead(Lock &lock, string const &fileName)
    {
        Fetched const fetched = Get(lock, fileName, false);
        if (!fetched.loaded || IsComplete(*fetched.loaded))
            return;
        lock.unlock();
        LoadedPtr const complete = Complete(*fetched.loaded,
                                            [&](double)
                                            {
                                                std::lock_guard const guard(mutex);
                                                return !isEnding && requests.empty();
                                            });
        lock.lock();
        if (complete)
            KeepComplete(fileName, complete);
    }

    /// Returns the bytes of all files that are kept, shown or not.
    std::uint64_t CountKept() const
    {
        std::uint64_t byteSize = 0;
        for (auto const &file : kept)
            byteSize += CountBytes(*file.second.loaded);
        return byteSize;
    }

    /// Returns the file to drop: the least recently used of those that nobody else holds, if they take too much.
    std::map<string, Kept>::iterator FindSurplus()
    {
        std::uint64_t byteSize = 0;
        auto oldest = kept.end();
        for (auto file = kept.begin(); file != kept.end(); ++file)
        {
            if (file->second.loaded.use_count() > 1)
                continue;
            byteSize += CountBytes(*file->second.loaded);
            if (oldest == kept.end() || file->second.time < oldest->second.time)
                oldest = file;
        }
        return byteSize > cacheByteSize || kept.size() > s_maxKept ? oldest : kept.end();
    }

    /// Drops what is kept too much, without the lock, because large blocks take a while. True if there was some.
    bool DropKept(Lock &lock)
    {
        std::vector<LoadedPtr> dropped;
        for (auto file = FindSurplus(); file != kept.end(); file = FindSurplus())
        {
            dropped.push_back(std::move(file->second.loaded));
            kept.erase(file);
        }
        if (dropped.empty())
            return false;
        lock.unlock();
        dropped.clear();
        lock.lock();
        return true;
    }

    std::function<void()> wake;
    std::uint64_t const cacheByteSize;
    mutable std::mutex mutex;
    std::condition_variable changed;
    /// The newest first.
    std::deque<Request> requests;
    std::deque<string> previews;
    std::deque<string> ahead;
    /// Files that a thread reads.
    std::set<string> reading;
    std::map<string, Kept> kept;
    std::uint64_t time = 0;
    std::vector<LoadResult> results;
    unsigned int lastNumber = 0;
    std::size_t numIdle = 0;
    bool isEnding = false;
    std::array<std::thread, 2> threads;
};

Loader::Loader(std::function<void()> wake, std::uint64_t cacheByteSize)
    : state_(std::make_unique<State>(std::move(wake), cacheByteSize))
{
}

Loader::~Loader() = default;

void Loader::Load(string const &fileName)
{
    Cancel(fileName);
    FileStamp const stamp = GetFileStamp(fileName);
    {
        State::Lock lock(state_->mutex);
        state_->requests.push_front({fileName, ++state_->lastNumber});
        auto const found = state_->kept.find(fileName);
        if (found != state_->kept.end() && found->second.stamp == stamp)
        {
            found->second.time = ++state_->time;
            LoadedPtr const loaded = found->second.loaded;
            state_->AddContent(lock, state_->requests.front(), loaded, stamp);
        }
    }
    state_->changed.notify_all();
}

void Loader::ReadAhead(std::vector<string> fileNames)
{
    {
        std::lock_guard const lock(state_->mutex);
        state_->ahead.assign(fileNames.begin(), fileNames.end());
    }
    state_->changed.notify_all();
}

void Loader::MakePreviews(std::vector<string> fileNames)
{
    {
        std::lock_guard const lock(state_->mutex);
        auto const isAskedAgain = [&](string const &name)
        { return std::find(fileNames.begin(), fileNames.end(), name) != fileNames.end(); };
        std::erase_if(state_->previews, isAskedAgain);
        state_->previews.insert(state_->previews.begin(), fileNames.begin(), fileNames.end());
    }
    state_->changed.notify_all();
}

void Loader::Cancel(string const &fileName)
{
    std::lock_guard const lock(state_->mutex);
    std::erase_if(state_->requests, [&](State::Request const &request) { return request.fileName == fileName; });
    std::erase_if(state_->results, [&](LoadResult const &result)
                  { return result.fileName == fileName && result.part != LoadResult::ePart::e_preview; });
}

std::vector<LoadResult> Loader::Poll()
{
    std::vector<LoadResult> results;
    {
        std::lock_guard const lock(state_->mutex);
        results.swap(state_->results);
    }
    // Somebody may have let go of files that are kept.
    if (!results.empty())
        state_->changed.notify_all();
    return results;
}

bool Loader::IsBusy() const
{
    std::lock_guard const lock(state_->mutex);
    return !state_->requests.empty();
}

} // namespace viewer
