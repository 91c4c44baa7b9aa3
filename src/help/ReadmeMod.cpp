#include "help/ReadmeMenus.h"

namespace quillbay {

namespace {

constexpr ReadmeTopic kMod[] = {
    {"Mod menu", 0, "Select a topic below."},
    {"'Compatability checker'", 1,
     R"~(Mod, Check Compatability (Ctrl+C) lists the files that two mods have in common. Choose one mod in
each list and press Check Compatability. In place of a mod you may choose "(Tempest II Directory)", the game
itself: then you see which of its files the mod would replace.

"(Mods are compatable)" means that there is no such file. Mods that have files in common can be installed
together all the same: the one installed last has its files in the game.

Only files that would be installed count, and ModInfo.txt and the mod's picture are left out. Names that
differ in letter case count as different. Each side may have up to 10,000 files.)~"},
    {"'Edit ModInfo.txt file' command", 1,
     R"~(Mod, Edit ModInfo.txt file (Ctrl+E) is the editor for ModInfo.txt. Choose the mod, fill in the five
boxes and press Make ModInfo.txt file; Quillbay asks first. A file that is there already is replaced. Clear
empties the boxes.

A live preview shows what the main window will show. While a box is empty or holds only spaces, it shows the
default text, which is what the main window shows now, such as "(File does not contain author)".

When the editor opens, no mod is chosen and the boxes are empty. To change what a mod says already, leave the
editor open and select the mod in the main window (if it is selected already, another one and then it again):
the boxes are filled with what is shown for it. That includes the default texts in brackets; clear those that
you do not want in the file. Choosing a mod in the editor itself keeps what you typed.

Only the first line of a value is shown later. A character that your system's own character set (code page)
does not have is refused, and a file whose values are too long to be shown whole is not written over. If the
file cannot be written, a message says so, the old file stays, and what you typed is still in the boxes.)~"},
    {"ModInfo.txt file", 2,
     R"~(A text file named ModInfo.txt, directly in the mod's folder, describes the mod. It is not needed,
and it is not installed into the game. It has five fields, one per line, in any order:

    Author: Ann Fairwater
    Description: Adds the Viper, a fast scout.
    Version: 1.0
    Other Heading: Thanks to
    Other: everybody who tested it

Each line begins exactly like this, with capitals, colon and blank. Other Heading is the heading above
Other. Other lines do not count; if a field is there twice, the last one holds. Write && for an ampersand: a
single & is not shown and underlines the letter after it.

The lines must end as in Windows. The editor (Mod, Edit ModInfo.txt file) takes care of that; with a text
editor on Linux choose that kind of line end, or the whole file counts as one line.)~"},
    {"ModPic.bmp/jpg file", 2,
     R"~(A mod may have a picture, which the main window shows at its top: a file ModPic.bmp or ModPic.jpg
directly in the mod's folder, spelled exactly like that. Use only one of the two. A picture of 457 by 89
pixels fills the space. It is shown in its own size: a smaller one leaves a part empty, a larger one is cut
off.

If the file is not a valid picture, the main window says "Picture file is not a valid picture or it is
corrupted.")~"},
    {"Odf checker", 1,
     R"~(Mod, Open odf checker (Ctrl+K) checks all ODF files of a folder for seven common errors: quotation
marks, #include, races, weapons, tooltips, builditems and verbose tooltips. It opens with the game's odf
folder. At an error it stops and shows the file, so that you can repair it right there. More help is in the
window, in the list "Choose a topic:".

If you check another folder than the game's, such as the odf folder of a mod, mind that the ODFs that a file
refers to are only looked for in that folder. What the mod takes from the game is reported as missing then.
To check a mod together with the game, install it and check the game's folder.

Repairing changes the files in the folder that is checked. If you repair a mod's file in the game, copy it
into the mod's folder too, so that uninstalling knows it again. "Remove unused lines from odfs" takes the
comments and empty lines out of all files.)~"},
    {"'Analyze Mod Files' command", 1,
     R"~(Mod, Analyze Mod Files (Ctrl+Z) lists the mods with their game folders. Click on a folder to list
its files; a double-click opens it in the file explorer of your system. Addons are not shown.

- An ODF file in ships or stations shows ten of its values, such as the costs.
- A picture (.bmp, .jpg, .gif) is shown. A click on it lets it fill the window, where it can be dragged;
another click brings it back.
- A double-click or Enter plays a sound (.wav, with a name in small letters) and opens any other file with
its program.

Ctrl+C copies the selected file, Ctrl+V pastes it into the folder that is shown, Ctrl+D removes the selected
file from the disk without asking.)~"},
    {"Right click menu in analyzer", 2,
     R"~(The right mouse button on a file opens a menu.

- Open plays or opens the file, as a double-click does.
- Remove deletes the file from the disk without asking.
- Copy remembers the file. It is not put on the clipboard of your system.
- Paste copies the remembered file into the folder that is shown. A file of the same name is never replaced.

The menu of a picture copies it to the clipboard, lets it fill the window, and puts it back into the
middle.)~"},
    {"'View Available Tech Trees' command", 1,
     R"~(Mod, View Available Tech Trees (Ctrl+T) lists the tech trees that a mod supports and those that it
lacks. Quillbay looks for these files in the mod's techtree folder:

    tech1.tt: Standard Tech
    nosuper.tt: No Super Weapons
    nosci.tt: No Science Ships
    nospweap.tt: No Special Weapons
    earlytech.tt: Early Upgrades
    fulltech.tt or freetech.tt: Free Tech)~"},
    {"Current Mod menu", 1, "Select a topic below."},
    {"Readme file", 2,
     R"~(Mod, Current Mod, View mod's readme (Ctrl+W) opens the selected mod's Readme.txt with the default
text editor. Any file directly in the mod's folder will do whose name contains readme; it opens with the
program for its kind. The command is greyed out when there is none.)~"},
    {"'Make/Remove subfolders' command", 2,
     R"~(Mod, Current Mod, Make subfolders (Ctrl+B) makes all folders of the game in the selected mod, as
empty folders, so that you only have to put the files in. Remove subfolders (Ctrl+S) removes those that are
still empty; a folder with something in it stays. Both ask first. For an addon they work in the addon's
folder.)~"},
};

} // namespace

std::span<const ReadmeTopic> ModTopics() { return kMod; }

} // namespace quillbay
