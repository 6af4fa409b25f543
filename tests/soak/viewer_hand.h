// A hand that does anything to the viewer.
#ifndef QUILLMARSH_TESTS_SOAK_VIEWER_HAND_H
#define QUILLMARSH_TESTS_SOAK_VIEWER_HAND_H

#include <quillmarsh/host/session.h>

#include <filesystem>
#include <random>

namespace quillmarsh::tests
{

/// Numbers at random, the same for the same seed.
class Dice
{
public:
    explicit Dice(unsigned int seed) : random_(seed) {}

    unsigned int Roll(std::size_t sides) { return static_cast<unsigned int>(random_() % sides); }
    bool IsOneIn(unsigned int sides) { return Roll(sides) == 0; }
    template<typename Values>
    auto const &Pick(Values const &values)
    {
        return *std::next(std::begin(values), Roll(std::size(values)));
    }

private:
    std::mt19937 random_;
};

/// A folder with files to open: copies of the data set in "good", and damaged ones in "bad".
class Files : NoCopy
{
public:
    /// Copies the files below `samples` into a folder, and damages copies of them.
    Files(Dice &dice, std::filesystem::path const &samples, std::filesystem::path const &folder);

    /// Returns the name of one of the files.
    string Pick(bool good);
    /// Cuts, empties, exchanges, deletes or restores one of the files.
    void Change();

private:
    struct File
    {
        std::filesystem::path name;
        string content;
    };

    string Damage(string content);

    Dice &dice_;
    std::vector<File> good_;
    std::vector<File> bad_;
};

/// Uses mouse, keys, console lines, files and the window of a session at random.
class ViewerHand : NoCopy
{
public:
    ViewerHand(Dice &dice, Files &files, host::Session &session);

    /// Does something if everything earlier is done. Called once for each frame.
    void Act();

private:
    using Action = void (ViewerHand::*)();
    struct WeightedAction
    {
        unsigned int weight;
        Action action;
    };
    static WeightedAction const s_actions[];

    void PressKey();
    void Click();
    void Drag();
    void Turn();
    void Type();
    void OpenGood();
    void OpenBad();
    void ChangeFile();
    void EnterLine();
    void Resize();
    void Rest();
    void AnswerFileDialog();

    void MoveAnywhere();
    string MakeLine();

    Dice &dice_;
    Files &files_;
    host::HostKernel &kernel_;
    gui::Robot &robot_;
    std::vector<string> keys_;
};

} // namespace quillmarsh::tests

#endif
