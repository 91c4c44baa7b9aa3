#include "help/ReadmeMenus.h"

namespace quillbay {

namespace {

constexpr ReadmeTopic kManager[] = {
    {"Manager menu", 0, "Select a topic below."},
    {"T2 Folder selection", 1,
     R"~(Quillbay finds the game's folder by itself, from the entry that the game's installer made in the
registry. On Linux that is the registry of the Wine prefix in WINEPREFIX, or of the one in .wine in your
home folder. Choose Manager, Change T2 Directory (Ctrl+H) only if that folder is wrong or if you want to
work on another copy of the game.

Pick the folder in the list (a double-click or Enter opens a folder) or type its path, then press OK or
Apply. In a typed path the name of the folder must be spelled as on the disk, letter case included;
otherwise the old folder stays. The choice holds until Quillbay ends; the next start reads the registry
again.

If the registry has no entry, or the folder in it is gone, Quillbay says "Pause", opens the window and
searches for the game's executable, Tempest2.exe: on the drive that Quillbay lies on, on Linux in the Wine
prefix. What it finds is shown, and is used after OK or Apply. Cancel ends the program, as long as no folder
is known.)~"},
    {"'Check currently installed mods' command", 1,
     R"~(Manager, Check currently installed mods (Ctrl+D) lists all installed mods and addons, or "(No mods
found.)" if there are none. The window may stay open; it follows what you do in the main window. Addons are
brought up to date when you click into it.)~"},
    {"File installer", 1,
     R"~(Manager, File installer (Ctrl+F) sorts a heap of loose files. It moves the common types of files
from a mod's base folder (directly in mods\ and the mod's name) into the game folders inside that mod. It
changes nothing in the game: install the mod afterwards as usual.

Choose the mod and press Install Files. To leave something out, take away the check mark of a type of file,
or click on the type and take away those of single files.

Say that mods\Volcano holds the map volcano.bzn. Choose Volcano, and the type Bzn appears. After Install
Files the map lies in mods\Volcano\bzn, and installing the mod puts it into the game's bzn folder.

The box in the window tells for each type which files belong to it and where they go. A file of the same
name in that folder is replaced. Files of other types stay where they are; sounds (.wav) are among them, so
move those yourself.)~"},
    {"Find Modified/New files", 1,
     R"~(Select a topic below.

If a question stays open, please send it to {address}.)~"},
    {"Show Find Modified/New files", 2,
     R"~(Manager, Find Modified/New files, Open Find Modified/New files (Ctrl+N) shows what has changed in
the game. It compares the sizes and the modification times of the game's files with those of an unpatched
installation, which are written down in FileList.txt in Quillbay's folder, and lists the new files and then
the modified ones. Makers of mods use it to collect the files of their mod.

The command is greyed out while there is no FileList.txt. Make it with Recompile definition file.

Press Scan. It takes a while; Cancel stops it and keeps what has been found so far. A file that has been
deleted from the game is not listed. The number of new files that the window shows before the first scan is
only a guess: the number of files now, less 6,836.)~"},
    {"File commands", 3,
     R"~(After a scan the listed files can be copied, moved and deleted. Copy and Move take the files that
are checked; a click on "Click me to invert selection." turns all check marks round.

Path is the destination. Browse chooses it; it must be an existing folder, such as a new one in mods made
with Mod, Make new mod folder. The three buttons can be pressed while the path is such a folder and a file
is checked.

- Copy copies the files into the destination, with the game's folders around them, and replaces files that
are there.
- Move does the same but takes the files out of the game. A file that the destination has already stays in
the game.
- Delete deletes every listed file of the kinds chosen with New and Mod. from the game, checked or not. It
asks first. There is no way back.

The files of installed mods are listed too: uninstall the mods before you move or delete anything. Files that
are then no longer new or modified stay in the game.

After Move or Delete the three buttons stay off until you close the window and open it again. If files could
not be copied, moved or deleted, a message says how many and names the first.)~"},
    {"View options", 3,
     R"~(The check boxes New and Mod. in the lower left show or hide the new and the modified files. A
scan lists both again. Refreshing a long list takes a moment, and afterwards all its files are checked again.
Delete takes only the kinds that are chosen. After Delete the box of the files that were deleted is greyed
out.)~"},
    {"Recompile definition file", 2,
     R"~(Manager, Find Modified/New files, Recompile definition file writes FileList.txt in Quillbay's
folder anew, from the game as it is now. Do this right after the game was installed, with no patch and no
mod in it: whatever is in the game then counts as normal from then on. Uninstall your mods first.

Quillbay asks first and says "Compilation complete." at the end. If the game's folder is not known or the
file cannot be written, a message says so and the old file stays.)~"},
    {"Syntax", 3,
     R"~(FileList.txt is a text file that you can read and change with a text editor; its lines must end as
in Windows. Each folder of the game begins with a heading: the word folder, a blank, an equals sign, a blank
and the name of the folder with a \ at its end, in the spelling that Recompile definition file writes. The
heading of the game's own folder names it 'rootdir', with these quotes. Then comes one line for each file:
its name, its size in bytes and its date, separated by semicolons. Empty lines do not count.

    folder = Textures\Rgb\

    Zpodall.tga;16428;11/3/2001 12:37:30 AM

The date is month/day/year and the time of day to the second, in local time.)~"},
    {"Install Map Editor", 1,
     R"~(The game has a map editor that is switched off. Manager, Install map editor (Ctrl+P) switches it
on: it makes the two empty marker files HLVX and unsupportedextension_mapedit in the game's folder, then
asks whether to start the game. The command is greyed out when both files exist; Manager, Launch, Map Editor
can be chosen then.

The entries of the Status menu are fixed texts. They do not tell whether the map editor is installed.)~"},
    {"Options", 1,
     R"~(The window of Manager, Options is self-explanatory. Every change takes effect and is stored at
once; there is nothing to confirm. Only Disable Auto Refresh is not stored: it holds until Quillbay ends.)~"},
    {"Auto refresh", 2,
     R"~(Once a second, and once every ten seconds while the main window is minimized, Quillbay looks
whether mods or addons have been added to the mods folder, renamed or taken away. If so, it refreshes the
list, without showing progress. It does not look inside the mods: select the mod again to see what has
changed in it, or press Refresh Mod List, which also counts the game's files.

A check mark at Disable Auto Refresh in the options window turns this off until Quillbay ends.)~"},
    {"Smooth closing", 2,
     R"~(Windows that close by shrinking, for systems where windows cannot fade. Where they can
(Windows 2000 and later, on Linux an X11 desktop with a compositing manager) they fade instead, and these
settings have no effect.

To see it, turn on X Axis and Y Axis and turn off Main window only, in Manager, Smooth closing or in the
options window. Then close a window, such as this one, and open it again.)~"},
    {"XAxis", 3,
     R"~(Turns the shrinking from left to right on or off. If X Axis and Y Axis are both off, smooth closing
is disabled.)~"},
    {"YAxis", 3,
     R"~(Turns the shrinking up and down on or off. If X Axis and Y Axis are both off, smooth closing is
disabled.)~"},
    {"Simultaneous", 3,
     R"~(Shrinks both axes at the same time. Otherwise the window shrinks up and down first and then from
left to right.)~"},
    {"Main window only", 3,
     R"~(Smooth closing only for the main window: all other windows close at once. This is on at first.)~"},
    {"Fade bars", 3,
     R"~(The two bars of the options window. They only have an effect on systems where windows can fade.

The upper bar is how opaque windows are, from 50, which lets most of what is behind shine through, to 255,
which lets nothing through. The options window shows it at once, the other windows when the options window
closes.

The lower bar is the speed of fading, from 1 (slowest) to 30 (fastest). The button below shows both.)~"},
    {"Launch menu", 1, "Select an item in the list below."},
    {"Tempest 2", 2,
     R"~(Manager, Launch, Tempest II (Ctrl+A) starts Tempest2.exe in the game's folder and closes Quillbay.
It is greyed out when that file is missing.

The game is started by the file "T2QB Launch T2.bat", which Quillbay writes into the game's folder. If it
cannot be written, a message says so and Quillbay stays open. On Linux the game starts under Wine, which
must be installed, in the Wine prefix that holds the game.)~"},
    {"Map Editor", 2,
     R"~(Manager, Launch, Map Editor asks for the file name of a map, starts Tempest2.exe with the parameter
/edit and that name, then closes Quillbay. It is greyed out until the map editor is installed (Manager,
Install map editor). It uses the file "T2QB Launch Map Editor.bat" in the game's folder; the rest is as for
the game.)~"},
    {"Tempest II Directory", 2, R"~(Opens the game's folder in the file explorer of your system.)~"},
    {"Quillbay Directory", 2,
     R"~(Opens Quillbay's own folder in the file explorer of your system. The mods folder lies in it.)~"},
    {"Web sites", 2,
     R"~(Tempest Universe, Tempest Fleet Command and Lodestar open that web site in your browser. The first
two are fan sites, Lodestar is a collection of mods.)~"},
};

} // namespace

std::span<const ReadmeTopic> ManagerTopics() { return kManager; }

} // namespace quillbay
