#include "ui/plugins/PluginWindow.h"

#include "skin/Palette.h"

PluginWindow::PluginWindow (juce::AudioProcessor& plugin, const juce::String& title, Content content,
                            std::function<void()> close)
    : DocumentWindow (title, palette::panel, DocumentWindow::closeButton | DocumentWindow::minimiseButton),
      onClose (std::move (close))
{
    setUsingNativeTitleBar (true);
    std::unique_ptr<juce::AudioProcessorEditor> editor;
    if (content == Content::own && plugin.hasEditor())
        editor.reset (plugin.createEditorIfNeeded());
    const auto isOwn = editor != nullptr;
    if (!isOwn)
        editor = std::make_unique<juce::GenericAudioProcessorEditor> (plugin);
    const auto resizable = !isOwn || editor->isResizable();
    setContentOwned (editor.release(), true);
    setResizable (resizable, false);
    centreWithSize (getWidth(), getHeight());
    setVisible (true);
    toFront (true);
}

PluginWindow::~PluginWindow()
{
    clearContentComponent();
}
