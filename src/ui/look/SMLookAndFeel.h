#pragma once

#include "text/ZRRendererLookAndFeel.h"

/** The dark skin of everything that is JUCE's: buttons, boxes, menus, bars, trees, tables, tabs, dialogs and window
    frames, and the program's own type.

    Made the default look while the editor lives. A combo box named `_ghostComboBox` shows nothing but its arrow, so that
    the picture behind it is seen. Message thread. */
class SMLookAndFeel : public ZRRendererLookAndFeel
{
public:
    SMLookAndFeel();

    /** The name a combo box has to be seen through. */
    static inline const juce::String ghostName { "_ghostComboBox" };

    static constexpr float labelSize = 11.0f, valueSize = 13.0f, titleSize = 16.0f, figureSize = 22.0f;

    /** The program's bold sans. @param size   in pixels from top to bottom of a line */
    static juce::Font font (float size);

    /** The same in labels' dress: 11 px with a little tracking. */
    static juce::Font labelFont();

    /** The font of a button's text, for its height. */
    static juce::Font buttonFont (int height);

    /** Fills an area and lays the light from above on it: a lighter line on top, a darker one below. */
    static void fillRaised (juce::Graphics&, juce::Rectangle<int>, juce::Colour);

    /** A row of a list or table. @param learning   while a mapping is being learnt, the selected row is lime */
    static void fillRow (juce::Graphics&, juce::Rectangle<int>, int row, bool selected,
                         bool learning = false);

    /** A small triangle, as menus and boxes have it. @param turned   clockwise from pointing down, in radians */
    static void drawArrow (juce::Graphics&, juce::Rectangle<int> area, juce::Colour, float turned = 0.0f);

    //==================================================================================================================
    // Buttons and values

    juce::Font getTextButtonFont (juce::TextButton&, int height) override;
    void drawButtonBackground (juce::Graphics&, juce::Button&, const juce::Colour&, bool over,
                               bool down) override;
    void drawButtonText (juce::Graphics&, juce::TextButton&, bool over, bool down) override;
    void drawToggleButton (juce::Graphics&, juce::ToggleButton&, bool over, bool down) override;
    void drawTickBox (juce::Graphics&, juce::Component&, float x, float y, float width, float height,
                      bool ticked, bool enabled, bool over, bool down) override;
    void changeToggleButtonWidthToFitText (juce::ToggleButton&) override;
    juce::Font getLabelFont (juce::Label&) override;
    void drawLabel (juce::Graphics&, juce::Label&) override;
    void fillTextEditorBackground (juce::Graphics&, int width, int height, juce::TextEditor&) override;
    void drawTextEditorOutline (juce::Graphics&, int width, int height, juce::TextEditor&) override;
    void drawLinearSlider (juce::Graphics&, int x, int y, int width, int height, float sliderPos,
                           float minSliderPos, float maxSliderPos, juce::Slider::SliderStyle,
                           juce::Slider&) override;
    void drawRotarySlider (juce::Graphics&, int x, int y, int width, int height, float sliderPos,
                           float startAngle, float endAngle, juce::Slider&) override;
    int getSliderThumbRadius (juce::Slider&) override { return 14; }
    void drawProgressBar (juce::Graphics&, juce::ProgressBar&, int width, int height, double progress,
                          const juce::String& text) override;
    void drawGroupComponentOutline (juce::Graphics&, int width, int height, const juce::String& text,
                                    const juce::Justification&, juce::GroupComponent&) override;

    //==================================================================================================================
    // Boxes and menus

    void drawComboBox (juce::Graphics&, int width, int height, bool down, int buttonX, int buttonY,
                       int buttonWidth, int buttonHeight, juce::ComboBox&) override;
    juce::Font getComboBoxFont (juce::ComboBox&) override;
    void positionComboBoxText (juce::ComboBox&, juce::Label&) override;
    void drawComboBoxTextWhenNothingSelected (juce::Graphics&, juce::ComboBox&, juce::Label&) override;
    juce::Font getPopupMenuFont() override;
    void drawPopupMenuBackground (juce::Graphics&, int width, int height) override;
    void drawPopupMenuItem (juce::Graphics&, const juce::Rectangle<int>&, bool separator, bool active,
                            bool highlighted, bool ticked, bool hasSubMenu, const juce::String& text,
                            const juce::String& shortcut, const juce::Drawable* icon,
                            const juce::Colour* textColour) override;
    void drawPopupMenuSectionHeader (juce::Graphics&, const juce::Rectangle<int>&,
                                     const juce::String& name) override;
    void drawPopupMenuUpDownArrow (juce::Graphics&, int width, int height, bool isUp) override;
    void getIdealPopupMenuItemSize (const juce::String& text, bool separator, int standardHeight, int& width,
                                    int& height) override;
    int getPopupMenuBorderSize() override { return 4; }

    //==================================================================================================================
    // Lists, trees, tables, tabs

    void drawScrollbar (juce::Graphics&, juce::ScrollBar&, int x, int y, int width, int height, bool vertical,
                        int thumbStart, int thumbSize, bool over, bool down) override;
    int getDefaultScrollbarWidth() override { return 12; }
    int getMinimumScrollbarThumbSize (juce::ScrollBar&) override { return 24; }
    bool areScrollbarButtonsVisible() override { return false; }
    void drawTreeviewPlusMinusBox (juce::Graphics&, const juce::Rectangle<float>&, juce::Colour background,
                                   bool isOpen, bool over) override;
    bool areLinesDrawnForTreeView (juce::TreeView&) override { return false; }
    int getTreeViewIndentSize (juce::TreeView&) override { return 16; }
    void drawTableHeaderBackground (juce::Graphics&, juce::TableHeaderComponent&) override;
    void drawTableHeaderColumn (juce::Graphics&, juce::TableHeaderComponent&, const juce::String& name,
                                int columnId, int width, int height, bool over, bool down,
                                int flags) override;
    void drawTabButton (juce::TabBarButton&, juce::Graphics&, bool over, bool down) override;
    void drawTabbedButtonBarBackground (juce::TabbedButtonBar&, juce::Graphics&) override;
    void drawTabAreaBehindFrontButton (juce::TabbedButtonBar&, juce::Graphics&, int width,
                                       int height) override;
    int getTabButtonOverlap (int) override { return 0; }
    int getTabButtonSpaceAroundImage() override { return 0; }
    int getTabButtonBestWidth (juce::TabBarButton&, int depth) override;
    void drawFileBrowserRow (juce::Graphics&, int width, int height, const juce::File&,
                             const juce::String& name, juce::Image* icon, const juce::String& size,
                             const juce::String& time, bool isFolder, bool selected, int row,
                             juce::DirectoryContentsDisplayComponent&) override;

    //==================================================================================================================
    // Windows, dialogs, tooltips

    void drawDocumentWindowTitleBar (juce::DocumentWindow&, juce::Graphics&, int width, int height,
                                     int titleX, int titleWidth, const juce::Image* icon,
                                     bool titleOnLeft) override;
    juce::Button* createDocumentWindowButton (int type) override;
    void positionDocumentWindowButtons (juce::DocumentWindow&, int x, int y, int width, int height,
                                        juce::Button* minimise, juce::Button* maximise, juce::Button* close,
                                        bool onLeft) override;
    void drawResizableWindowBorder (juce::Graphics&, int width, int height, const juce::BorderSize<int>&,
                                    juce::ResizableWindow&) override;
    void drawCornerResizer (juce::Graphics&, int width, int height, bool over, bool dragging) override;
    void drawAlertBox (juce::Graphics&, juce::AlertWindow&, const juce::Rectangle<int>& textArea,
                       juce::TextLayout&) override;
    int getAlertWindowButtonHeight() override { return 24; }
    juce::Font getAlertWindowTitleFont() override;
    juce::Font getAlertWindowMessageFont() override;
    juce::Font getAlertWindowFont() override;
    juce::Rectangle<int> getTooltipBounds (const juce::String& text, juce::Point<int> position,
                                           juce::Rectangle<int> parentArea) override;
    void drawTooltip (juce::Graphics&, const juce::String& text, int width, int height) override;

    /** A tooltip's text, set in its lines. */
    static juce::TextLayout tooltipLayout (const juce::String& text);

private:
    void setControlColours();
    void setListColours();
    void setWindowColours();
};
