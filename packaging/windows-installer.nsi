; The installer for Windows, for one user and without an administrator: the program, its entry in the Start menu, and an
; uninstaller, which removes what this has brought and nothing else.
;   makensis -DVERSION=1.2.3 -DFILES=folder -DREMOVALS=file -DICON=file -DOUTPUT=file windows-installer.nsi
; FILES is the program's folder as it will be; REMOVALS is a list of commands that undo it.
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
RequestExecutionLevel user

!include LogicLib.nsh
!include MUI2.nsh
!include Win\COM.nsh
!include Win\Propkey.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillbay"
!define ENTRY "$SMPROGRAMS\Quillbay.lnk"
!define IDENTITY "Quillbay.Quillbay" ; as the program calls itself

Name "Quillbay"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Quillbay"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText " "

VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Quillbay"
VIAddVersionKey CompanyName "Quillbay contributors"
VIAddVersionKey FileDescription "Installs Quillbay"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey LegalCopyright "Quillbay contributors, MIT License"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\quillbay.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "Only the program goes. Your mods stay where they are, with their Backup folders, \
which hold the game's original files. If the game is to be as it was, start Quillbay and uninstall the mods first."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Ends with code 2 while the program runs, whose file cannot be replaced then.
!macro StopWhileRunning PREFIX
Function ${PREFIX}StopWhileRunning
    ; The program's lock has the user's SID in its name.
    System::Call 'advapi32::OpenProcessToken(p -1, i 8, *p .r1)'
    System::Call 'advapi32::GetTokenInformation(p r1, i 1, p 0, i 0, *i .r2)'
    System::Alloc $2
    Pop $3
    System::Call 'advapi32::GetTokenInformation(p r1, i 1, p r3, i r2, *i .r2)'
    System::Call '*$3(p .r4)'
    System::Call 'advapi32::ConvertSidToStringSidW(p r4, *p .r5)'
    System::Call 'kernel32::lstrcpyW(w .r0, p r5)'
    System::Call 'kernel32::LocalFree(p r5)'
    System::Free $3
    System::Call 'kernel32::CloseHandle(p r1)'
    System::Call 'kernel32::OpenMutexW(i 0x100000, i 0, w "Global\quillbay.$0") p .r1'
    ${If} $1 P<> 0
        System::Call 'kernel32::CloseHandle(p r1)'
        MessageBox MB_OK|MB_ICONEXCLAMATION "Quillbay is running. Close it first." /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
FunctionEnd
!macroend
!insertmacro StopWhileRunning ""
!insertmacro StopWhileRunning "un."

Function .onInit
    Call StopWhileRunning
FunctionEnd

Function un.onInit
    Call un.StopWhileRunning
FunctionEnd

; The shortcut has the program's identity, so that the taskbar takes it and the running program for one.
Function MakeEntry
    CreateShortcut "${ENTRY}" "$INSTDIR\quillbay.exe"
    !insertmacro ComHlpr_CreateInProcInstance ${CLSID_ShellLink} ${IID_IShellLink} r0 ""
    ${If} $0 P= 0
        Return
    ${EndIf}
    ${IUnknown::QueryInterface} $0 '("${IID_IPersistFile}",.r1)'
    ${IUnknown::QueryInterface} $0 '("${IID_IPropertyStore}",.r2)'
    ${If} $1 P<> 0
    ${AndIf} $2 P<> 0
        ${IPersistFile::Load} $1 '("${ENTRY}",${STGM_READWRITE})'
        System::Call '*${SYSSTRUCT_PROPERTYKEY}(${PKEY_AppUserModel_ID})p.r3'
        System::Call '*(&w${NSIS_MAX_STRLEN} "${IDENTITY}")p.r4'
        System::Call '*${SYSSTRUCT_PROPVARIANT}(31,,p r4)p.r5' ; 31: VT_LPWSTR
        ${IPropertyStore::SetValue} $2 '($3,$5)'
        ${IPropertyStore::Commit} $2 ""
        ${IPersistFile::Save} $1 '("${ENTRY}",1)'
        System::Free $3
        System::Free $4
        System::Free $5
    ${EndIf}
    !insertmacro ComHlpr_SafeRelease $1
    !insertmacro ComHlpr_SafeRelease $2
    ${IUnknown::Release} $0 ""
FunctionEnd

Section
    SetOutPath "$INSTDIR"
    File /r "${FILES}\*"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    Call MakeEntry
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Quillbay"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\quillbay.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Quillbay contributors"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; Says where the user's files are, if there are any.
!macro TellOfMods FOLDER
    ${If} ${FileExists} "${FOLDER}\mods\*.*"
        DetailPrint "Your mods stay in ${FOLDER}\mods"
        MessageBox MB_OK|MB_ICONINFORMATION "Your mods stay in$\n$\n${FOLDER}\mods$\n$\nFolders named Backup in it hold \
original files of the game. Keep them as long as a mod is in the game." /SD IDOK
    ${EndIf}
!macroend

Section "Uninstall"
    !include "${REMOVALS}"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR" ; only when it is empty
    Delete "${ENTRY}"
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
    !insertmacro TellOfMods "$INSTDIR"
    !insertmacro TellOfMods "$LOCALAPPDATA\Quillbay"
SectionEnd
