#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdlib>
#include <utility>

// drag_source FILE: another program's window, at the screen's top left corner, out of which the mouse drags a file, as out of
// a file manager's.

namespace
{
constexpr int size = 90;

class OutsideWindow : public juce::Component, public juce::DragAndDropContainer
{
public:
    explicit OutsideWindow (juce::String file) : path (std::move (file))
    {
        setName ("Drag source");
        setBounds (0, 0, size, size);
        addToDesktop (juce::ComponentPeer::windowIsTemporary);
        setVisible (true);
    }
    void paint (juce::Graphics& g) override { g.fillAll (juce::Colours::orange); }
    void mouseDrag (const juce::MouseEvent&) override
    {
        if (!std::exchange (isDragging, true))
            performExternalDragDropOfFiles ({ path }, false, this, [this] { isDragging = false; });
    }

private:
    const juce::String path;
    bool isDragging = false;
};
}

int main (int argc, char** argv)
{
    if (argc != 2)
        return EXIT_FAILURE;
    const juce::ScopedJuceInitialiser_GUI juceScope;
    const OutsideWindow window (juce::String::fromUTF8 (argv[1]));
    juce::MessageManager::getInstance()->runDispatchLoop();
    return EXIT_SUCCESS;
}
