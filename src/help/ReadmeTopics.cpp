#include "help/ReadmeTopics.h"

#include "help/ReadmeMenus.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace quillbay {

namespace {

constexpr std::size_t kIndent = 4;

constexpr ReadmeTopic kFirst[] = {
    {"Introduction", 0,
     R"~(Quillbay (T2QB for short) puts mods into Tempest II and takes them out again. A mod needs no extra
files for that, no installer and no description: it is a folder in Quillbay's mods folder, laid out like the
folder of the game. Its odf\ships folder holds what goes into the game's odf\ships folder, and so on.

Installing copies the mod's files into the game and first saves every game file that they replace.
Uninstalling gives the game back as it was, byte for byte. The program keeps no list of what it did: a mod
is installed as long as its folder holds a folder named Backup.

Besides that Quillbay shows what is known about a mod, compares mods with each other, finds out what has
changed in the game, and helps to make mods.

In this readme folders are written with \ between their names, as in Windows. On Linux read / instead.
Letter case does not matter in the names of the game's folders: ODF\Ships and odf\ships are one folder.)~"},
    {"Putting a mod into T2QB", 1,
     R"~(Say that you have got a new ship made of the files viper.odf, viper.sod and viper.tga.

1. Choose Manager, Launch, Quillbay Directory. The folder that opens holds the folder mods.
2. Make a folder in mods and name it after the mod, here Viper. Mod, Make new mod folder (Ctrl+M) does the
same.
3. Put each file into the subfolder where the game has files of that kind:
    mods\Viper\odf\ships\viper.odf
    mods\Viper\Sod\viper.sod
    mods\Viper\Textures\Rgb\viper.tga

Within a second the mod is in the list. A mod that came as an archive is unpacked into mods; see that the
game's folders lie directly in the mod's folder and not one folder deeper.

If you do not want to make the subfolders yourself, let Mod, Current Mod, Make subfolders make all of them.
If you do not know where the files go, put them directly into the mod's folder and use Manager, File
installer.

- Files that lie directly in the mod's folder are installed into the game's own folder. ModInfo.txt is not.
- Folders that the game does not know, such as Docs, are not installed, and neither are hidden files.
- Files that lie directly in the mods folder belong to no mod and are not listed.)~"},
    {"Installing", 1,
     R"~(Select the mod in the list and press Install Mod. A double-click on the mod, the Enter key, Ctrl+I
and Install Mod in the menu of the right mouse button do the same. Quillbay asks, copies the files and beeps
when it is done.

Every game file that the mod replaces is first saved in the mod's Backup folder. A file that cannot be saved
is not replaced. If there can be no backup at all, or if the game's folder is not known, nothing is installed
and a message says why. Leave the Backup folder alone, and do not change, rename or move the mod's files
while it is installed: they tell Quillbay what to take out of the game again.

Installed mods are listed in the window of Manager, Check currently installed mods, and Uninstall Mod can be
pressed for them.

A mod that is installed already can be installed again; Quillbay asks first. The saved game files stay as
they are.

When several mods hold the same file, the one installed last has its file in the game. Mod, Check
Compatability shows beforehand which files two mods have in common.

Some mods come with an installer of their own. Make a folder for the mod in mods and tell the installer to
use that folder instead of the game's; then install the mod with Quillbay.)~"},
    {"Uninstalling", 1,
     R"~(Select the mod in the list and press Uninstall Mod. The Backspace key, Ctrl+U and Uninstall Mod in
the menu of the right mouse button do the same. The mod's files are deleted from the game and the saved ones
are put back. The mod's own folder stays, so that you can install it again. A game file of the same name
that is no longer the mod's and has no saved copy is left alone.

If the mod is not installed, a warning comes first: without a backup, the game's files that are named like
the mod's are deleted and not replaced. Answer No unless you want just that.

Several mods may be uninstalled in any order: when the last of them is out, the game is what it was before
the first one went in. The reverse order of installing is still the tidiest. When you uninstall a mod whose
files a later mod has replaced too, the game's own files come back at once, in place of the later mod's.
Install the later mod again to play on with it.

If something cannot be put back, because the game is running for example, a message says so and names the
first file. The mod then still counts as installed and its Backup folder keeps what is missing. Remove the
cause and uninstall again.

If the program or the computer stops in the middle of installing or uninstalling, start Quillbay again. If
the mod counts as installed then, uninstall it, and the game is as it was. If it does not, the game is as it
was already.)~"},
    {"Removing", 1,
     R"~(To delete a mod from the disk, select it and press the Del key, or choose Remove mod in the menu
Mod, Current Mod or in the menu of the right mouse button. Quillbay asks first. The mod's folder is deleted
with everything in it, its addons included; it does not go to the recycle bin. For an addon only the addon's
folder is deleted.

Uninstall a mod before you remove it. Removing changes nothing in the game: the files of an installed mod
stay there, and the game's original files in its Backup folder are deleted with it. If the mod or one of its
addons is installed, the question says so.)~"},
    {"Addons", 1,
     R"~(An addon is a mod that belongs to another mod. It lies in a folder named Addon inside that mod and
is laid out like a mod itself. On this computer an addon More Ships of a mod Viper would be the folder

    {program}\mods\Viper\Addon\More Ships

with its files in More Ships\odf\ships and so on.

Addons are listed below their mod, a little indented. Each one is installed and uninstalled on its own and
has its own Backup folder; installing the mod does not install its addons.

The analyzer (Mod, Analyze Mod Files) does not handle addons yet, and the file installer does not list
them.)~"},
};

constexpr ReadmeTopic kLast[] = {
    {"Report a bug/make a suggestion", 0,
     R"~(If something does not work as this readme says, or if you miss something, please write to the
address below. A click on it starts a new message in your mail program; it can also be selected and copied.

For a bug please say

- what you were doing, step by step,
- what happened, with the text of the message if there was one,
- whether it happens again when you do the same,
- which version of Quillbay (Help, About) and which operating system you have.

For a suggestion please say what you want to do and what stands in the way today.)~"},
};

bool StaysALine(std::string_view line, std::string_view lineAbove) {
    const auto begins = [](std::string_view text, std::string_view with) {
        return !text.empty() && with.find(text.front()) != std::string_view::npos;
    };
    return line.empty() || lineAbove.empty() || begins(line, " -0123456789") || begins(lineAbove, " ");
}

std::string JoinParagraphs(std::string_view source) {
    std::string text;
    std::string_view above;
    while (!source.empty()) {
        const auto line = source.substr(0, source.find('\n'));
        if (!text.empty()) text += StaysALine(line, above) ? '\n' : ' ';
        text += line;
        above = line;
        source.remove_prefix(std::min(source.size(), line.size() + 1));
    }
    return text;
}

void Replace(std::string& text, std::string_view name, std::string_view value) {
    if (const auto at = text.find(name); at != std::string::npos) text.replace(at, name.size(), value);
}

} // namespace

std::vector<ReadmeTopic> ReadmeTopics() {
    using Part = std::span<const ReadmeTopic>;
    std::vector<ReadmeTopic> topics;
    for (const Part part : {Part(kFirst), ManagerTopics(), ModTopics(), Part(kLast)})
        topics.insert(topics.end(), part.begin(), part.end());
    return topics;
}

std::string ReadmeRow(const ReadmeTopic& topic) {
    return std::string(kIndent * static_cast<std::size_t>(topic.level), ' ').append(topic.name);
}

std::string ReadmeText(const ReadmeTopic& topic, std::string_view programDirectory) {
    std::string text = JoinParagraphs(topic.source);
    Replace(text, "{address}", kContactAddress);
    Replace(text, "{program}", programDirectory);
    return text;
}

} // namespace quillbay
