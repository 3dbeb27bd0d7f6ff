#include "Writer.h"

#include "Materials.h"

juce::Image drawStrip (const skin::Row& row, float scale)
{
    const int width = skin::scaled (row.width, scale), height = skin::scaled (row.height, scale);
    juce::Image strip (juce::Image::ARGB, width, height * row.frames, true, juce::SoftwareImageType());
    for (int frame = 0; frame < row.frames; ++frame)
    {
        auto place = strip.getClippedImage ({ 0, frame * height, width, height });
        juce::Graphics g (place);
        g.addTransform (
            juce::AffineTransform::scale (static_cast<float> (width) / static_cast<float> (row.width),
                                          static_cast<float> (height) / static_cast<float> (row.height)));
        painterOf (row.material) (
            { g, scale, static_cast<float> (row.width), static_cast<float> (row.height) }, row, frame);
    }
    return strip;
}

bool writePng (const juce::Image& image, const juce::File& file)
{
    juce::TemporaryFile temporary (file);
    {
        juce::FileOutputStream stream (temporary.getFile());
        if (!stream.openedOk() || !juce::PNGImageFormat().writeImageToStream (image, stream))
            return false;
    }
    return temporary.overwriteTargetFileWithTemporary();
}

juce::String writeSkin (const juce::File& folder, const juce::File& font)
{
    if (!folder.createDirectory())
        return "Can't make the folder " + folder.getFullPathName() + ".";

    juce::String assembly (
        ".section .rodata\n.hidden px_skin_files, px_skin_places, px_skin_font, px_skin_font_size\n"
        ".global px_skin_files, px_skin_places, px_skin_font, px_skin_font_size\n"
        "px_skin_files:\n");
    juce::String places (".balign 4\npx_skin_places:\n");
    int count = 0;
    for (const float scale : skin::scales)
        for (const auto& row : skin::table)
        {
            const auto name =
                juce::String (row.name().data(), row.name().size()) + "@" + juce::String (scale, 2) + ".png";
            const auto file = folder.getChildFile (name);
            if (!writePng (drawStrip (row, scale), file))
                return "Can't write " + file.getFullPathName() + ".";
            assembly << ".Lfile" << count << ": .incbin " << file.getFullPathName().quoted() << "\n";
            places << ".long .Lfile" << count++ << " - px_skin_files\n";
        }
    assembly << ".Lend:\n"
             << places << ".long .Lend - px_skin_files\n"
             << "px_skin_font_size: .long .Lfontend - px_skin_font\n"
             << "px_skin_font: .incbin " << font.getFullPathName().quoted() << "\n.Lfontend:\n"
             << ".section .note.GNU-stack,\"\",@progbits\n";
    const auto file = folder.getChildFile ("skin.S");
    return file.replaceWithText (assembly, false, false, "\n")
               ? juce::String()
               : "Can't write " + file.getFullPathName() + ".";
}
