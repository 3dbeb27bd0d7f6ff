#include "ui/drag/FileDragSource.h"

juce::var DragSourceName::ofPress (const char* name)
{
    return juce::ModifierKeys::currentModifiers.isPopupMenu() ? juce::var() : juce::var (name);
}

juce::StringArray DragSourceName::filesOf (const juce::DragAndDropTarget::SourceDetails& details)
{
    const auto name = details.description.toString();
    const auto* source = name == table || name == files
                             ? dynamic_cast<const FileDragSource*> (details.sourceComponent.get())
                             : nullptr;
    return source != nullptr ? source->draggedFiles() : juce::StringArray();
}
