#include "callorder.h"

#include <algorithm>
#include <iterator>

namespace video_null
{

namespace
{

using Statistics = gui::Renderer::Statistics;

/// States of a renderer, which are bits of a set.
enum eState : unsigned int
{
    e_same = 0,
    e_disconnected = 1,
    e_connected = 2,
    e_ready = 4,
    e_drawing = 8,
    e_interleaved = 16
};

struct CallRule
{
    eCall call;
    char const *name;
    /// States in which the call may come.
    unsigned int places;
    /// The places in words.
    char const *placeText;
    /// State after the call; e_same when it does not change.
    eState next;
    /// Counter of the calls; null for none.
    unsigned int Statistics::*counter;
};

constexpr char const *s_szDrawing = "between Begin() and End()";
constexpr char const *s_szReady = "where the resources have been created";

constexpr CallRule s_rules[] = {
    {eCall::e_connect, "ConnectVideoSubsystem", e_disconnected, "where no subsystem is connected", e_connected,
     nullptr},
    {eCall::e_createResources, "CreateVideoResources", e_connected, "behind ConnectVideoSubsystem()", e_ready, nullptr},
    {eCall::e_releaseResources, "ReleaseVideoResources", e_ready, "behind CreateVideoResources()", e_connected,
     nullptr},
    {eCall::e_disconnect, "DisconnectVideoSubsystem", e_connected, "behind ReleaseVideoResources()", e_disconnected,
     nullptr},
    {eCall::e_windowResize, "OnWindowResize", e_disconnected | e_connected | e_ready, "outside Begin() and End()",
     e_same, nullptr},
    {eCall::e_createTexture, "CreateTexture", e_ready | e_drawing, s_szReady, e_same, nullptr},
    {eCall::e_clearBuffers, "ClearBuffers", e_ready | e_drawing, s_szReady, e_same, &Statistics::NumClearBuffers},
    {eCall::e_setViewport, "SetViewport", e_ready | e_drawing, s_szReady, e_same, &Statistics::NumSetViewport},
    {eCall::e_begin, "Begin", e_ready, "outside Begin() and End()", e_drawing, &Statistics::NumBegin},
    {eCall::e_end, "End", e_drawing, "behind Begin()", e_ready, &Statistics::NumEnd},
    {eCall::e_flush, "Flush", e_drawing, s_szDrawing, e_same, nullptr},
    {eCall::e_beginInterleaved, "BeginInterleaved", e_drawing, s_szDrawing, e_interleaved,
     &Statistics::NumBeginInterleaved},
    {eCall::e_endInterleaved, "EndInterleaved", e_interleaved, "behind BeginInterleaved()", e_drawing,
     &Statistics::NumEndInterleaved},
    {eCall::e_setClipRectangle, "SetClipRectangle", e_drawing, s_szDrawing, e_same, nullptr},
    {eCall::e_resetClipRectangle, "ResetClipRectangle", e_drawing, s_szDrawing, e_same, nullptr},
    {eCall::e_setDepthParams, "SetDepthParams", e_ready | e_drawing, s_szReady, e_same, &Statistics::NumSetDepthParams},
    {eCall::e_setTransform, "SetTransform", e_drawing, s_szDrawing, e_same, &Statistics::NumSetTransform},
    {eCall::e_drawColored, "DrawPrimitive", e_drawing, s_szDrawing, e_same, &Statistics::NumDrawPrimitiveColored},
    {eCall::e_drawTextured, "DrawPrimitive", e_drawing, s_szDrawing, e_same, &Statistics::NumDrawPrimitiveTextured},
    {eCall::e_drawText, "DrawText", e_drawing, s_szDrawing, e_same, &Statistics::NumDrawText},
};

constexpr bool IsInOrder()
{
    for (std::size_t index = 0; index < std::size(s_rules); ++index)
    {
        if (s_rules[index].call != static_cast<eCall>(index))
            return false;
    }
    return true;
}
static_assert(IsInOrder(), "the row of a call is its number");

} // namespace

CallOrder::CallOrder(Statistics &statistics, std::function<void(string const &)> report)
    : statistics_(statistics),
      report_(std::move(report)),
      state_(e_disconnected)
{
}

bool CallOrder::Enter(eCall call)
{
    CallRule const &rule = s_rules[static_cast<std::size_t>(call)];
    bool const isInPlace = (rule.places & state_) != 0;
    if (!isInPlace)
        AddFault(MakeFault(rule.name, rule.placeText));
    if (rule.counter != nullptr)
        ++(statistics_.*rule.counter);
    if (rule.next != e_same)
    {
        // Also after a fault, which would otherwise lead to further ones.
        state_ = rule.next;
        stateCall_ = rule.name;
    }
    return isInPlace;
}

string CallOrder::MakeFault(char const *call, char const *place) const
{
    string const before = stateCall_ != nullptr ? string("after ") + stateCall_ + "()" : "as the first call";
    return string(call) + "() came " + before + ", but belongs " + place + ".";
}

void CallOrder::AddFault(string const &text)
{
    if (std::find(faults_.begin(), faults_.end(), text) != faults_.end())
        return;
    faults_.push_back(text);
    if (report_)
        report_(text);
}

bool CallOrder::IsDrawing() const
{
    return (state_ & (e_drawing | e_interleaved)) != 0;
}

} // namespace video_null
