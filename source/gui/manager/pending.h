// What the next synchronisation has to do.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_PENDING_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_PENDING_H

namespace quillmarsh::gui::manager_parts
{

/// Flags that the parts set and Synchronisation works off. The record that they share.
struct Pending
{
    /// @name Whether created and deleted objects enter and leave their lists
    /// @{
    bool componentInsert = true;
    bool shaderInsert = true;
    bool cursorInsert = true;
    /// @}

    /// @name Work
    /// @{
    bool layersDirty = false;
    bool queuesDirty = false;
    bool tileTexturesToCreate = false;
    bool fontsToCreate = false;
    bool tileTextureListChanged = false;
    bool fontListChanged = false;
    bool recacheAllTileTextures = false;
    bool recacheAllFonts = false;
    bool shaderListChanged = false;
    bool cursorListChanged = false;
    bool internalCursorsDirty = true;
    bool globalCursorParamsChanged = false;
    bool allGeometryDirty = true;
    bool windowResizePending = true;
    /// @}

    /// The next dispatch tests what is under the mouse, also if it did not move.
    bool forceHitTest = true;
};

} // namespace quillmarsh::gui::manager_parts

#endif
