// The image room.
#include "../room.h"

#include "imagecommands.h"
#include "imageinspector.h"
#include "imageview.h"
#include "numbers.h"

#include <ostream>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr KeyBinding s_keys[] = {
    {e_key_equals, e_plain, "zoom in", "Zoom in", true},
    {e_key_equals, e_shift, "zoom in", "Zoom in", true},
    {e_key_num_add, e_plain, "zoom in", "Zoom in", true},
    {e_key_minus, e_plain, "zoom out", "Zoom out", true},
    {e_key_num_subtract, e_plain, "zoom out", "Zoom out", true},
    {e_key_0, e_plain, "zoom fit", "Show the whole image"},
    {e_key_1, e_plain, "zoom 1", "One pixel for each sample"},
    {e_key_arrow_left, e_plain, "pan 64 0", "Look to the left", true},
    {e_key_arrow_right, e_plain, "pan -64 0", "Look to the right", true},
    {e_key_arrow_up, e_plain, "pan 0 64", "Look up", true},
    {e_key_arrow_down, e_plain, "pan 0 -64", "Look down", true},
    {e_key_arrow_left, e_shift, "pan 8 0", "Look a little to the left", true},
    {e_key_arrow_right, e_shift, "pan -8 0", "Look a little to the right", true},
    {e_key_arrow_up, e_shift, "pan 0 8", "Look up a little", true},
    {e_key_arrow_down, e_shift, "pan 0 -8", "Look down a little", true},
    {e_key_r_bracket, e_plain, "level coarser", "Draw the next smaller level"},
    {e_key_l_bracket, e_plain, "level finer", "Draw the next larger level"},
    {e_key_c, e_plain, "channel next", "Show the next channel"},
    {e_key_p, e_plain, "palette next", "Use the next palette"},
    {e_key_a, e_plain, "alpha", "Checkerboard through alpha"},
    {e_key_e, e_plain, "exposure -by=0.5", "Brighter", true},
    {e_key_e, e_shift, "exposure -by=-0.5", "Darker", true},
    {e_key_g, e_plain, "gamma -by=0.1", "Larger gamma", true},
    {e_key_g, e_shift, "gamma -by=-0.1", "Smaller gamma", true},
    {e_key_w, e_plain, "window auto", "Window from the least to the greatest value"},
    {e_key_r, e_plain, "reset-display", "Show the samples as they are"},
    {e_key_h, e_plain, "histogram", "Histogram"},
    {e_key_m, e_plain, "measure -tool=next", "Drag to move, for a line, for a rectangle"},
    {e_key_m, e_shift, "measure off", "Take the measurement away"},
    {e_key_b, e_plain, "blink", "Exchange the two images"},
    {e_key_d, e_plain, "difference", "What differs in the two images"},
};

class ImageRoom : public Room
{
public:
    explicit ImageRoom(Workspace &workspace) : state_(std::make_shared<ImageState>(workspace)) {}

    ~ImageRoom() override { state_->Close(); }

    char const *GetTitle() const override { return "Images"; }
    unsigned int GetNumDimensions() const override { return 2; }
    void AddCommands(CommandSet &commands) override { AddImageCommands(commands, state_); }
    std::span<KeyBinding const> GetKeys() const override { return s_keys; }

    gui::Component *MakeView(gui::Component &parent) override
    {
        view_ = new ImageView(&parent, state_);
        return view_;
    }
    void MakeInspector(widgets::Stack &column) override
    {
        inspector_ = std::make_unique<ImageInspector>(column, state_);
    }

    void Show(DocumentPtr const &document, bool) override { state_->Show(document); }
    void Update(double seconds) override
    {
        state_->Update(seconds);
        if (view_ != nullptr)
            view_->Update(seconds);
        if (inspector_ != nullptr)
            inspector_->Update();
    }
    string GetStatus() const override { return view_ != nullptr ? view_->GetStatus() : string(); }

    void WriteState(ostream &out) const override
    {
        HistogramSettings const &histogram = state_->histogram;
        out << "histogram " << (histogram.isShown ? "on" : "off")
            << " -log=" << (histogram.isLogarithmic ? "on" : "off")
            << " -of=" << (histogram.isOfView ? "view" : "image") << '\n'
            << "alpha " << (state_->display.showAlpha ? "on" : "off") << '\n';
    }

private:
    std::shared_ptr<ImageState> state_;
    ImageView *view_ = nullptr;
    std::unique_ptr<ImageInspector> inspector_;
};

} // namespace

std::unique_ptr<Room> MakeImageRoom(Workspace &workspace)
{
    return std::make_unique<ImageRoom>(workspace);
}

} // namespace viewer
