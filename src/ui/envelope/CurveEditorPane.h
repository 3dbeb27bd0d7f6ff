#pragma once

#include "support/language/Translate.h"
#include "ui/envelope/EnvEditor.h"
#include "ui/envelope/EnvelopesTable.h"
#include "ui/envelope/PresetFiles.h"

/** The content of an instrument's editor window: the table of its curves, the editor of the one that is chosen, and
    import, export and close. */
class CurveEditorPane : public juce::Component, private GraphEnvListener
{
public:
    struct Files
    {
        PresetFiles files;
        std::function<juce::String()> name; ///< proposed for a new file
        PresetFiles::Act importFile, exportFile;
    };

    /** @param prompts   ask for the files of states; may be null. Outlive the pane */
    CurveEditorPane (EnvLanes, Files, Prompts* prompts, int tableWidth);
    ~CurveEditorPane() override;

    std::function<void()> onClose;

    EnvComponent& curves() noexcept { return editor.curves(); }
    EnvelopesTable& curveTable() noexcept { return table; }

    void resized() override;
    void paint (juce::Graphics&) override;
    bool keyPressed (const juce::KeyPress&) override;

private:
    void graphEnvChanged (EnvComponent&) override;

    const Files preset;
    const int tableWidth;
    EnvelopesTable table;
    EnvEditor editor;
    PXTextButton importButton { tr ("IMPORT") }, exportButton { tr ("EXPORT") }, closeButton { tr ("CLOSE") };
};
