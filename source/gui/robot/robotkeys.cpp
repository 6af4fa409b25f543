// The steps of a robot's keyboard.
#include "source/gui/robot/robotwork.h"

#include "source/gui/robot/latin1.h"

#include <quillmarsh/devices/keyboardlayout.h>

namespace quillmarsh::gui
{

/// Types a text, one change of a key in each frame. Modifiers stay down as long as the characters need them.
class Robot::Work::Typing
{
public:
    Typing(Work &work, string const &text) : work_(work), text_(text) {}

    eStep Run()
    {
        if (next_ == text_.size())
            return FitModifiers({}) ? eStep::e_done : eStep::e_goesOn;
        KeyStroke stroke;
        FindLayoutStroke(text_[next_], stroke);
        if (isDown_)
        {
            work_.SetKey(stroke.key, false);
            isDown_ = false;
            ++next_;
            return eStep::e_goesOn;
        }
        Check(stroke);
        if (!hasListener_ || !FitModifiers(stroke))
            return eStep::e_goesOn;
        work_.SetKey(stroke.key, true);
        isDown_ = true;
        return eStep::e_goesOn;
    }

private:
    struct OwnModifier
    {
        eKey key;
        bool KeyStroke::*isWanted;
        bool isDown = false;
    };

    /// Finds out whether somebody takes the character, and fails if nobody does for too long.
    void Check(KeyStroke const &stroke)
    {
        Manager const &manager = Manager::Instance();
        char ignored = 0;
        bool const isCharacter = FindLayoutCharacter(stroke, ignored);
        hasListener_ = !isCharacter || manager.GetKeyboard()->IsEnabledCharacterMapping();
        if (!hasListener_ && numWaits_++ >= work_.patience)
            work_.Fail("no component takes characters; " + DescribeFocus(manager));
        if (hasListener_)
            numWaits_ = 0;
        if (IsCycleKey(stroke, manager))
            work_.Fail("the key " + GetKeyName(stroke.key) +
                       " does not reach any component, as it activates the next one");
    }

    static string DescribeFocus(Manager const &manager)
    {
        if (manager.IsKeyboardFocusTargetApplication())
            return "the application has the keyboard focus";
        Component const &target = *manager.GetKeyboardFocusTarget();
        bool const isNobody = target.GetParent() == nullptr && !target.IsFocused();
        return isNobody ? "nothing has the keyboard focus" : ComponentPath::Make(target) + " has the keyboard focus";
    }

    static bool IsCycleKey(KeyStroke const &stroke, Manager const &manager)
    {
        eKey key = e_key_none;
        eKeyModifier modifier = Manager::s_noKeyModifier;
        eKeyModifier reverse = Manager::s_noKeyModifier;
        bool isEnabled = false;
        bool onCreate = false;
        bool onTopLevel = false;
        manager.GetCycleQueueKeys(key, modifier, reverse);
        manager.GetCycleQueueProperties(isEnabled, onCreate, onTopLevel);
        bool const hasModifier = modifier == Manager::s_noKeyModifier || manager.IsKeyModifierPressed(modifier);
        return isEnabled && hasModifier && key == stroke.key;
    }

    /// Presses or releases one modifier. Returns true when all fit. Keys that somebody else holds stay down.
    bool FitModifiers(KeyStroke const &stroke)
    {
        for (OwnModifier &modifier : modifiers_)
        {
            bool const isWanted = stroke.*modifier.isWanted;
            bool const isHeld = !modifier.isDown && work_.hands->Get().keys[modifier.key];
            if (isHeld || isWanted == modifier.isDown)
                continue;
            modifier.isDown = isWanted;
            work_.SetKey(modifier.key, isWanted);
            return false;
        }
        return true;
    }

    Work &work_;
    string const text_;
    std::size_t next_ = 0;
    bool isDown_ = false;
    bool hasListener_ = false;
    unsigned int numWaits_ = 0;
    OwnModifier modifiers_[2] = {{e_key_l_shift, &KeyStroke::shift}, {e_key_r_alt, &KeyStroke::altGr}};
};

Robot::Work::Run Robot::Work::MakeTyping(string const &text)
{
    return [typing = std::make_shared<Typing>(*this, text)] { return typing->Run(); };
}

Robot::Work::Run Robot::Work::MakeKeys(std::vector<eKey> const &keys, bool isPressed)
{
    return [this, keys, isPressed]
    {
        if (keys.empty())
            return eStep::e_done;
        SetKey(keys[frames_], isPressed);
        return frames_ + 1 == keys.size() ? eStep::e_doneInFrame : eStep::e_goesOn;
    };
}

} // namespace quillmarsh::gui
