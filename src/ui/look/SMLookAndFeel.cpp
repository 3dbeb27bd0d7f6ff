#include "ui/look/SMLookAndFeel.h"

#include "skin/Palette.h"
#include "skin/Skin.h"
#include "text/ZRRendererFontManager.h"

namespace
{
constexpr float labelTracking = 0.04f; ///< of the size
constexpr float arrowWidth = 8.0f, arrowHeight = 4.0f;

using Colours = std::initializer_list<std::pair<int, juce::Colour>>;

void setAll (juce::LookAndFeel& look, Colours colours)
{
    for (const auto& [id, colour] : colours)
        look.setColour (id, colour);
}
}

SMLookAndFeel::SMLookAndFeel()
{
    setColourScheme ({ palette::ground, palette::panel, palette::raised, palette::line, palette::value,
                       palette::line, palette::value, palette::line, palette::value });
    setControlColours();
    setListColours();
    setWindowColours();
    const auto file = skin::fontData();
    ZRRendererFontManager::getInstance().addFont (skin::typefaceName, file.data(), file.size());
    setDefaultFontName (skin::typefaceName);
}

void SMLookAndFeel::setControlColours()
{
    setAll (*this, {
                       { juce::TextButton::buttonColourId, palette::well },
                       { juce::TextButton::buttonOnColourId, palette::accent },
                       { juce::TextButton::textColourOffId, palette::value },
                       { juce::TextButton::textColourOnId, palette::ink },
                       { juce::ToggleButton::textColourId, palette::value },
                       { juce::ToggleButton::tickColourId, palette::accent },
                       { juce::HyperlinkButton::textColourId, palette::accent },
                       { juce::Label::textColourId, palette::value },
                       { juce::Label::textWhenEditingColourId, palette::value },
                       { juce::TextEditor::backgroundColourId, palette::well },
                       { juce::TextEditor::textColourId, palette::value },
                       { juce::TextEditor::highlightColourId, palette::line },
                       { juce::TextEditor::highlightedTextColourId, palette::value },
                       { juce::TextEditor::outlineColourId, palette::line },
                       { juce::TextEditor::focusedOutlineColourId, palette::accent },
                       { juce::TextEditor::shadowColourId, juce::Colours::transparentBlack },
                       { juce::CaretComponent::caretColourId, palette::accent },
                       { juce::ComboBox::backgroundColourId, palette::well },
                       { juce::ComboBox::textColourId, palette::value },
                       { juce::ComboBox::arrowColourId, palette::label },
                       { juce::ComboBox::outlineColourId, juce::Colours::transparentBlack },
                       { juce::Slider::trackColourId, palette::label },
                       { juce::Slider::textBoxTextColourId, palette::value },
                       { juce::Slider::textBoxBackgroundColourId, palette::well },
                       { juce::Slider::textBoxOutlineColourId, juce::Colours::transparentBlack },
                       { juce::ProgressBar::backgroundColourId, palette::well },
                       { juce::ProgressBar::foregroundColourId, palette::label },
                       { juce::GroupComponent::outlineColourId, palette::line },
                       { juce::GroupComponent::textColourId, palette::label },
                   });
}

void SMLookAndFeel::setListColours()
{
    setAll (*this, {
                       { juce::ListBox::backgroundColourId, palette::ground },
                       { juce::ListBox::textColourId, palette::tableText },
                       { juce::ListBox::outlineColourId, juce::Colours::transparentBlack },
                       { juce::TableHeaderComponent::backgroundColourId, palette::raised },
                       { juce::TableHeaderComponent::outlineColourId, palette::line },
                       { juce::TableHeaderComponent::textColourId, palette::label },
                       { juce::TableHeaderComponent::highlightColourId, palette::well },
                       { juce::TreeView::backgroundColourId, palette::ground },
                       { juce::TreeView::evenItemsColourId, palette::ground },
                       { juce::TreeView::oddItemsColourId, palette::ground },
                       { juce::TreeView::selectedItemBackgroundColourId, palette::selectedRow },
                       { juce::TreeView::dragAndDropIndicatorColourId, palette::accent },
                       { juce::DirectoryContentsDisplayComponent::highlightColourId, palette::selectedRow },
                       { juce::DirectoryContentsDisplayComponent::textColourId, palette::tableText },
                       { juce::DirectoryContentsDisplayComponent::highlightedTextColourId, palette::value },
                       { juce::FileBrowserComponent::currentPathBoxBackgroundColourId, palette::well },
                       { juce::FileBrowserComponent::currentPathBoxTextColourId, palette::value },
                       { juce::FileBrowserComponent::currentPathBoxArrowColourId, palette::label },
                       { juce::FileBrowserComponent::filenameBoxBackgroundColourId, palette::well },
                       { juce::FileBrowserComponent::filenameBoxTextColourId, palette::value },
                       { juce::FileChooserDialogBox::titleTextColourId, palette::value },
                       { juce::ScrollBar::backgroundColourId, palette::ground },
                       { juce::ScrollBar::thumbColourId, palette::line },
                       { juce::ScrollBar::trackColourId, palette::ground },
                       { juce::TabbedComponent::backgroundColourId, palette::panel },
                       { juce::TabbedComponent::outlineColourId, juce::Colours::transparentBlack },
                       { juce::TabbedButtonBar::tabOutlineColourId, juce::Colours::transparentBlack },
                       { juce::TabbedButtonBar::frontOutlineColourId, juce::Colours::transparentBlack },
                       { juce::TabbedButtonBar::tabTextColourId, palette::label },
                       { juce::TabbedButtonBar::frontTextColourId, palette::value },
                   });
}

void SMLookAndFeel::setWindowColours()
{
    setAll (*this, {
                       { juce::ResizableWindow::backgroundColourId, palette::ground },
                       { juce::DocumentWindow::textColourId, palette::value },
                       { juce::PopupMenu::backgroundColourId, palette::raised },
                       { juce::PopupMenu::textColourId, palette::value },
                       { juce::PopupMenu::headerTextColourId, palette::label },
                       { juce::PopupMenu::highlightedBackgroundColourId, palette::line },
                       { juce::PopupMenu::highlightedTextColourId, palette::value },
                       { juce::AlertWindow::backgroundColourId, palette::line },
                       { juce::AlertWindow::textColourId, palette::value },
                       { juce::AlertWindow::outlineColourId, palette::edgeDark },
                       { juce::TooltipWindow::backgroundColourId, palette::line },
                       { juce::TooltipWindow::textColourId, palette::value },
                       { juce::TooltipWindow::outlineColourId, palette::edgeDark },
                   });
}

juce::Font SMLookAndFeel::font (float size)
{
    return { skin::typefaceName, size, juce::Font::plain };
}

juce::Font SMLookAndFeel::labelFont()
{
    return font (labelSize).withExtraKerningFactor (labelTracking);
}

juce::Font SMLookAndFeel::buttonFont (int height)
{
    constexpr int roomForValues = 24;
    return height < roomForValues ? labelFont() : font (valueSize);
}

void SMLookAndFeel::fillRaised (juce::Graphics& g, juce::Rectangle<int> area, juce::Colour colour)
{
    g.setColour (colour);
    g.fillRect (area);
    g.setColour (palette::edgeLight);
    g.fillRect (area.removeFromTop (1));
    g.setColour (palette::edgeDark);
    g.fillRect (area.removeFromBottom (1));
}

void SMLookAndFeel::fillRow (juce::Graphics& g, juce::Rectangle<int> area, int row, bool selected,
                             bool learning)
{
    g.setColour (row % 2 == 0 ? palette::ground : palette::raised);
    g.fillRect (area);
    if (!selected)
        return;
    g.setColour (learning ? palette::learningRow : palette::selectedRow);
    g.fillRect (area);
}

void SMLookAndFeel::drawArrow (juce::Graphics& g, juce::Rectangle<int> area, juce::Colour colour,
                               float turned)
{
    const auto centre = area.toFloat().getCentre();
    juce::Path arrow;
    arrow.addTriangle (-0.5f * arrowWidth, -0.5f * arrowHeight, 0.5f * arrowWidth, -0.5f * arrowHeight, 0.0f,
                       0.5f * arrowHeight);
    g.setColour (colour);
    g.fillPath (arrow, juce::AffineTransform::rotation (turned).translated (centre));
}
