// A row of the list of files.
#ifndef QUILLMARSH_PLUGINS_VIEWER_FILES_FILEROW_H
#define QUILLMARSH_PLUGINS_VIEWER_FILES_FILEROW_H

#include "canvas.h"
#include "files/filelist.h"

#include <quillmarsh/widgets/label.h>

namespace viewer
{

/// Picture of a file: its preview, or the mark of its kind. It is a ghost.
class FilePicture : public quillmarsh::gui::Component
{
public:
    explicit FilePicture(quillmarsh::gui::Component &parent);
    ~FilePicture() override;

    /// Shows a preview at no more than the component's size; null for the mark.
    void Show(std::shared_ptr<Preview const> const &preview, quillmarsh::widgets::eMark mark);

    void RecalcLayout() override;
    void DrawSelf(quillmarsh::gui::Renderer &renderer) override;
    void OnVideoRendererChanged(quillmarsh::VideoRenderer *renderer) override;

private:
    void MakePicture();

    std::shared_ptr<Preview const> preview_;
    quillmarsh::widgets::Sign *sign_;
    Canvas canvas_;
    bool isStale_ = false;
};

/// Row of a FileList, which makes it.
class FileRow : public quillmarsh::gui::Component
{
public:
    /// Height in units.
    static constexpr float s_height = 48;

    struct State
    {
        bool isSelected = false;
        /// It is shown in the middle.
        bool isCurrent = false;
        bool isFocused = false;
    };

    explicit FileRow(FileList &list);
    ~FileRow() override;

    void Show(unsigned int index, FolderEntry const &entry, State state);

    quillmarsh::string GetCaption() const override { return name_->GetText(); }
    void RecalcLayout() override;
    void DrawSelf(quillmarsh::gui::Renderer &renderer) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, quillmarsh::eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       quillmarsh::vec2 const &position) override;

private:
    FileList &list_;
    unsigned int index_ = FileList::s_none;
    State state_;
    FilePicture *picture_;
    quillmarsh::widgets::Label *name_;
    quillmarsh::widgets::Label *detail_;
    quillmarsh::widgets::Label *failure_;
};

} // namespace viewer

#endif
