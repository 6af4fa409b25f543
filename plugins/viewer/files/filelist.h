// The entries of a folder as rows with previews.
#ifndef QUILLMARSH_PLUGINS_VIEWER_FILES_FILELIST_H
#define QUILLMARSH_PLUGINS_VIEWER_FILES_FILELIST_H

#include <viewer_model/files/folder.h>
#include <viewer_model/files/loader.h>

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/widgets/scrollbar.h>

#include <functional>

namespace viewer
{

class FileRow;

/// List of files and folders, of which one is selected. Only the rows that can be seen have components. The arrow keys,
/// Page Up and Down, Home and End move the selection while the list has the focus; Enter and a double click open.
/// Frame thread only.
class FileList : public quillmarsh::gui::Component
{
public:
    static constexpr unsigned int s_none = ~0U;

    struct Client
    {
        /// Opens an entry by its index.
        std::function<void(unsigned int)> open;
        /// Something else is seen than before.
        std::function<void()> changed;
        /// Returns the preview of an entry; null while there is none.
        std::function<std::shared_ptr<Preview const>(FolderEntry const &)> findPreview;
    };

    FileList(quillmarsh::gui::Component &parent, Client client);
    ~FileList() override;

    /// Takes the entries, which are borrowed until the next call. `current` is the name of the one that is shown in the
    /// middle. The selection stays at its name.
    void SetEntries(std::vector<FolderEntry> const &entries, string const &current);
    /// Selects an entry by its name, and scrolls to it; none for an unknown name.
    void Select(string const &name);
    /// Fills the rows anew, because previews have come.
    void Refresh();
    unsigned int GetSelected() const { return selected_; }
    /// Entries that can be seen, as indexes.
    unsigned int GetFirstVisible() const { return first_; }
    unsigned int GetNumVisible() const;

    void SelectByUser(unsigned int index);
    Client const &GetClient() const { return client_; }

    quillmarsh::string GetCaption() const override;
    void RecalcSize() override;
    void RecalcLayout() override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, quillmarsh::vec2 const &position) override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, quillmarsh::eMouseButton button, bool &wantFocus,
                              bool &needCharacterData) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, quillmarsh::eKey key, unsigned int repeatCount, char character) override;
    void OnChangedFocused() override;

private:
    unsigned int CountWholeRows() const;
    unsigned int GetNumEntries() const;
    void ScrollTo(unsigned int first);
    void ShowSelected();
    void FillRows();

    Client client_;
    std::vector<FolderEntry> const *entries_ = nullptr;
    string current_;
    string selectedName_;
    unsigned int selected_ = s_none;
    unsigned int first_ = 0;
    int wheelRest_ = 0;
    std::vector<FileRow *> rows_;
    quillmarsh::widgets::ScrollBar *bar_;
};

} // namespace viewer

#endif
