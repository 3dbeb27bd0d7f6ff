#include "cli/perform/RunRoot.h"

#include "cli/TerminalOutput.h"
#include "settings/Folders.h"
#include "support/language/Translate.h"

RunRoot::RunRoot (const VerbOptions& given)
    : isTemporary (!given.has ("--root")),
      temporary (isTemporary ? std::make_unique<PrivateFolder>() : nullptr)
{
    folder = isTemporary ? temporary->folder : given.fileOf ("--root");
    if (folder.createDirectory().failed() || !folder.hasWriteAccess())
        fault = tr ("The folder %1 can't be made or written.", folder.getFullPathName());
    if (isTemporary || fault.isNotEmpty())
        return;
    isHeld = lock.emplace (Folders { folder }.setup()).take();
    if (!isHeld)
        reportLine ("platterdex: "
                    + tr ("Another program has the folder %1 in use; settings, pads and SmartKnobs of this "
                          "run are not kept.",
                          folder.getFullPathName()));
}

void RunRoot::warnOfLostRecordings() const
{
    if (isTemporary && Folders { folder }.diskRecorder().getNumberOfChildFiles (juce::File::findFiles) > 0)
        reportLine (
            "platterdex: "
            + tr ("The set made a recording that is removed with the run's temporary folder; --root DIR "
                  "keeps it."));
}
