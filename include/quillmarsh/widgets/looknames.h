// Names of the shaders, fonts and cursors that the widgets use. A look registers something under each of them.
#ifndef QUILLMARSH_WIDGETS_LOOKNAMES_H
#define QUILLMARSH_WIDGETS_LOOKNAMES_H

namespace quillmarsh::widgets
{

/// @name Shaders
/// A widget sets the name of its shader in its constructor; a program may set another one. A shader finds what it draws
/// in the public getters of the widget.
/// @{
inline constexpr char ShaderName_Panel[] = "look/panel";
/// Surface without a frame, for a panel that fills the window.
inline constexpr char ShaderName_Desk[] = "look/desk";
/// Popup without a title: menus, lists of choices.
inline constexpr char ShaderName_Popup[] = "look/popup";
/// Plain area with a frame, for groups of widgets.
inline constexpr char ShaderName_Group[] = "look/group";
inline constexpr char ShaderName_Label[] = "look/label";
inline constexpr char ShaderName_Heading[] = "look/heading";
/// Title of a group of widgets.
inline constexpr char ShaderName_Section[] = "look/section";
inline constexpr char ShaderName_Hint[] = "look/hint";
inline constexpr char ShaderName_Failure[] = "look/failure";
/// Sign beside the text of a message.
inline constexpr char ShaderName_Sign[] = "look/sign";
inline constexpr char ShaderName_Button[] = "look/button";
/// Button that shows its mark only, without a frame until the mouse is over it.
inline constexpr char ShaderName_ToolButton[] = "look/tool-button";
inline constexpr char ShaderName_CheckBox[] = "look/check-box";
inline constexpr char ShaderName_RadioButton[] = "look/radio-button";
inline constexpr char ShaderName_Slider[] = "look/slider";
inline constexpr char ShaderName_SliderThumb[] = "look/slider-thumb";
inline constexpr char ShaderName_ScrollBar[] = "look/scroll-bar";
inline constexpr char ShaderName_ScrollThumb[] = "look/scroll-thumb";
inline constexpr char ShaderName_TextField[] = "look/text-field";
inline constexpr char ShaderName_ListBox[] = "look/list-box";
inline constexpr char ShaderName_TabView[] = "look/tab-view";
inline constexpr char ShaderName_Tab[] = "look/tab";
inline constexpr char ShaderName_SplitterThumb[] = "look/splitter-thumb";
inline constexpr char ShaderName_ProgressBar[] = "look/progress-bar";
inline constexpr char ShaderName_ToolTip[] = "look/tool-tip";
inline constexpr char ShaderName_Menu[] = "look/menu";
inline constexpr char ShaderName_ConsoleText[] = "look/console-text";
/// @}

/// @name Fonts
/// Sheets with the whole of Latin-1, each at the size of its use.
/// @{
inline constexpr char FontName_Small[] = "look/small";
inline constexpr char FontName_Text[] = "look/text";
inline constexpr char FontName_Bold[] = "look/bold";
inline constexpr char FontName_Title[] = "look/title";
inline constexpr char FontName_Large[] = "look/large";
/// All glyphs have one width.
inline constexpr char FontName_Mono[] = "look/mono";
/// @}

/// @name Cursors
/// The look also gives the areas of components their cursors, under the standard names.
/// @{
inline constexpr char CursorName_Text[] = "look/text";
inline constexpr char CursorName_Hand[] = "look/hand";
inline constexpr char CursorName_SplitHorizontal[] = "look/split-horizontal";
inline constexpr char CursorName_SplitVertical[] = "look/split-vertical";
/// @}

/// Picture beside a text, or instead of it, that a look draws in its colours.
enum eMark : unsigned int
{
    e_mark_none = 0,
    e_mark_check,
    e_mark_dot,
    e_mark_cross,
    e_mark_plus,
    e_mark_minus,
    e_mark_arrow_left,
    e_mark_arrow_right,
    e_mark_arrow_up,
    e_mark_arrow_down,
    e_mark_folder,
    e_mark_parent_folder,
    e_mark_file,
    e_mark_picture,
    e_mark_volume,
    e_mark_signal,
    e_mark_drive,
    e_mark_search,
    e_mark_settings,
    e_mark_information,
    e_mark_question,
    e_mark_warning,
    e_mark_error
};
/// Number of values of eMark.
constexpr unsigned int s_numMarks = e_mark_error + 1;

} // namespace quillmarsh::widgets

#endif
