#include <quillmarsh/framework/videosubsystem.h>

#include <quillmarsh/basetools/logfilestream.h>
#include <quillmarsh/framework/videoprofile.h>

namespace quillmarsh
{

VideoSubsystem::VideoSubsystem() = default;

VideoSubsystem::~VideoSubsystem() = default;

bool VideoSubsystem::BuildVideoProfile(string const &logFileName, string const &logTitle, VideoProfile &profile)
{
    profile.Clear();
    LogFileStream log(logTitle, logFileName);
    log << "Collecting profile data." << std::endl;
    bool isValid = CollectVideoProfile(log, profile);
    profile.BuildPostProcess();
    profile.Dump(log);
    log << std::endl << "Validating profile." << std::endl;
    auto const reportError = [&](char const *text)
    {
        isValid = false;
        log << "Error: " << text << std::endl;
    };
    if (!isValid)
        reportError("Failed to collect all required information.");
    if (profile.GetNumDisplayModeProperties() == 0)
        reportError("No available display-modes.");
    if (profile.GetNumFrameBufferConfigs() == 0)
        reportError("No available frame-buffer-configurations.");
    log << "Validation result: " << (isValid ? "PASSED" : "FAILED") << std::endl;
    return isValid;
}

} // namespace quillmarsh
