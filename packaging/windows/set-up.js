// Makes Quillmoor run from everywhere for this user; with the argument "undo" puts everything back.
// Run by set-up.cmd and undo.cmd.
//
// The settings file is told the folder of VLXPRO.EXE unless it names one already. The shell is told
// to offer Quillmoor in "Open with", and in the context menu, because executables have no "Open
// with". Whatever is changed is noted first, so that undoing gives just what was there before, at
// any time and however often, and leaves alone what belongs to other programs.

var extensions = [".cpl", ".dll", ".exe", ".vbx"];
var classes = "HKCU\\Software\\Classes\\";
var notes = "HKCU\\Software\\Quillmoor set-up";

var files = new ActiveXObject("Scripting.FileSystemObject");
var shell = new ActiveXObject("WScript.Shell");
var folder = files.GetParentFolderName(WScript.ScriptFullName);
var program = folder + "\\quillmoor.exe";
var settingsFolder = shell.Environment("Process").Item("APPDATA") + "\\Orrindale";
var settings = settingsFolder + "\\VLXPRO30.INI";

// Files. Text is in the system's code page, or in UTF-16, which its zero bytes give away.

function readText(path) {
    if (!files.FileExists(path) || files.GetFile(path).Size == 0)
        return { text: "", wide: false };
    for (var format = 0; ; format--) {
        var stream = files.OpenTextFile(path, 1, false, format);
        var text = stream.ReadAll();
        stream.Close();
        if (format < 0 || text.indexOf("\0") < 0)
            return { text: text, wide: format < 0 };
    }
}

// Whether the system's code page, in which Quillmoor takes its paths, has every letter.
function fitsCodePage(text) {
    var path = files.GetSpecialFolder(2).Path + "\\" + files.GetTempName();
    var stream = files.CreateTextFile(path, true, false);
    var fits = true;
    try {
        stream.Write(text);
    } catch (strange) {
        fits = false;
    }
    stream.Close();
    fits = fits && readText(path).text == text;
    files.DeleteFile(path);
    return fits;
}

// The file is replaced when the new one is whole.
function replaceText(path, text, wide) {
    var fresh = path + ".new";
    try {
        var stream = files.CreateTextFile(fresh, true, wide);
        stream.Write(text);
        stream.Close();
        if (readText(fresh).text != text)
            throw new Error();
        if (files.FileExists(path))
            files.DeleteFile(path);
        files.MoveFile(fresh, path);
    } catch (failure) {
        if (files.FileExists(fresh) && files.FileExists(path))
            files.DeleteFile(fresh);
        throw new Error("The settings file could not be written: " + path);
    }
}

// The registry. Only reg.exe can tell a key that is empty from one that is missing.

function reg(command) {
    return shell.Run("reg " + command, 0, true) == 0;
}

function change(command) {
    if (!reg(command))
        throw new Error("The registry could not be changed: reg " + command);
}

function keyExists(key) {
    return reg('query "' + key + '"');
}

// Also false for a missing key.
function keyIsEmpty(key) {
    var output = files.GetTempName();
    shell.CurrentDirectory = files.GetSpecialFolder(2).Path;
    var exists = shell.Run('cmd /c reg query "' + key + '" >' + output, 0, true) == 0;
    var lines = readText(output).text.split(/\s*[\r\n]+/);
    files.DeleteFile(output);
    var heading = "HKEY_CURRENT_USER" + key.slice(4);
    for (var i = 0; i < lines.length; i++)
        if (lines[i] != "" && lines[i].toUpperCase() != heading.toUpperCase())
            return false;
    return exists;
}

function note(name) {
    try {
        return shell.RegRead(notes + "\\" + name);
    } catch (missing) {
        return "";
    }
}

function writeNote(name, value) {
    shell.RegWrite(notes + "\\" + name, value, "REG_SZ");
}

// The keys of a list among the notes, the newest first.
function notedKeys(name) {
    var keys = note(name).split("|");
    keys.pop();
    return keys.reverse();
}

// The keys above one of Quillmoor's serve other programs as well. Those that are missing, and so
// appear with it, are noted.
function noteParents(key) {
    var parent = files.GetParentFolderName(key);
    if (keyExists(parent))
        return;
    noteParents(parent);
    writeNote("Parents", note("Parents") + parent + "|");
}

// Makes way for a key that is Quillmoor's alone. What it held until now is kept among the notes.
function takeKey(key) {
    noteParents(key);
    var taken = keyExists(key);
    if (taken) {
        change('copy "' + key + '" "' + notes + key.slice(4) + '" /s /f');
        writeNote("Taken", note("Taken") + key + "|");
    }
    writeNote("Own", note("Own") + key + "|");
    if (taken)
        change('delete "' + key + '" /f');
}

function registerProgram() {
    var command = '"' + program + '" %1';
    var own = classes + "Applications\\quillmoor.exe";
    takeKey(own);
    shell.RegWrite(own + "\\FriendlyAppName", "Quillmoor", "REG_SZ");
    shell.RegWrite(own + "\\shell\\open\\command\\", command, "REG_SZ");
    for (var i = 0; i < extensions.length; i++) {
        shell.RegWrite(own + "\\SupportedTypes\\" + extensions[i], "", "REG_SZ");
        var entry = classes + extensions[i] + "\\OpenWithList\\quillmoor.exe";
        takeKey(entry);
        shell.RegWrite(entry + "\\", "", "REG_SZ");
        var verb = classes + "SystemFileAssociations\\" + extensions[i] + "\\shell\\Quillmoor";
        takeKey(verb);
        shell.RegWrite(verb + "\\", "Open with &Quillmoor", "REG_SZ");
        shell.RegWrite(verb + "\\Icon", program, "REG_SZ");
        shell.RegWrite(verb + "\\command\\", command, "REG_SZ");
    }
}

function unregisterProgram() {
    var own = notedKeys("Own");
    for (var i = 0; i < own.length; i++)
        if (keyExists(own[i]))
            change('delete "' + own[i] + '" /f');
    var taken = notedKeys("Taken");
    for (i = 0; i < taken.length; i++)
        change('copy "' + notes + taken[i].slice(4) + '" "' + taken[i] + '" /s /f');
    var parents = notedKeys("Parents");
    for (i = 0; i < parents.length; i++)
        if (keyIsEmpty(parents[i]))
            change('delete "' + parents[i] + '" /f');
}

// The settings file: section [Vellumax], key ApplicationPath, of which the first counts.

// Gives the folder that the text names, or "", and where in the text a line for it belongs, which
// is -1 when there is no section.
function findSetting(text) {
    var header = /^[ \t]*\[[ \t]*vellumax[ \t]*\][^\n]*(\n|$)/im.exec(text);
    if (header == null)
        return { value: "", at: -1 };
    var at = header.index + header[0].length;
    var section = text.slice(at).split(/^[ \t]*\[/m)[0];
    var line = /^[ \t]*applicationpath[ \t]*=[ \t]*(\S[^\r\n]*)/im.exec(section);
    return { value: line != null ? line[1] : "", at: at };
}

function nameFolder() {
    var old = readText(settings);
    var found = findSetting(old.text);
    if (found.value != "") {
        if (!files.FileExists(found.value + "\\VLXPRO.EXE"))
            WScript.Echo("Mind: your settings file names a folder without VLXPRO.EXE, " +
                found.value + "\nThat line is left as it is: " + settings);
        return;
    }
    var added = "ApplicationPath=" + folder + "\r\n";
    var at = found.at;
    if (at < 0) {
        added = "[Vellumax]\r\n" + added;
        at = old.text.length;
    }
    if (at > 0 && old.text.charAt(at - 1) != "\n")
        added = "\r\n" + added;
    if (!files.FolderExists(settingsFolder)) {
        writeNote("MadeFolder", "yes");
        files.CreateFolder(settingsFolder);
    }
    writeNote("MadeFile", files.FileExists(settings) ? "" : "yes");
    writeNote("Added", added);
    replaceText(settings, old.text.slice(0, at) + added + old.text.slice(at), old.wide);
}

function forgetFolder() {
    var old = readText(settings);
    var added = note("Added");
    var at = old.text.indexOf(added);
    if (added != "" && at >= 0) {
        var rest = old.text.slice(at + added.length);
        // Keys that came later need the section they are in.
        var header = /^\s*[^\s\[]/.test(rest) ? /^(\r\n)?\[.*\r\n/.exec(added) : null;
        var text = old.text.slice(0, at) + (header != null ? header[0] : "") + rest;
        if (text == "" && note("MadeFile") != "")
            files.DeleteFile(settings);
        else
            replaceText(settings, text, old.wide);
    }
    if (note("MadeFolder") != "" && files.FolderExists(settingsFolder)) {
        var left = files.GetFolder(settingsFolder);
        if (left.Files.Count + left.SubFolders.Count == 0)
            files.DeleteFolder(settingsFolder);
    }
}

function undo() {
    if (!keyExists(notes))
        return;
    unregisterProgram();
    forgetFolder();
    change('delete "' + notes + '" /f');
}

function setUp() {
    if (!files.FileExists(program) || !files.FileExists(folder + "\\VLXPRO.EXE"))
        throw new Error("Unpack the whole zip first, then start set-up.cmd in its folder.");
    if (!fitsCodePage(folder))
        throw new Error("Quillmoor's folder has a name with letters of another language than " +
            "yours. Move it to another folder.");
    undo();
    try {
        nameFolder();
        registerProgram();
    } catch (failure) {
        undo();
        throw failure;
    }
}

try {
    if (WScript.Arguments.length > 0 && WScript.Arguments(0) == "undo") {
        undo();
        WScript.Echo("Quillmoor's set-up is undone. Its folder can be deleted.");
    } else {
        setUp();
        WScript.Echo("Quillmoor is set up: right-click a CPL, DLL, EXE or VBX file to open it.");
    }
} catch (failure) {
    WScript.Echo(failure.message != "" ? failure.message : "Error " + failure.number);
    WScript.Quit(1);
}
