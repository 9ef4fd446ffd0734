; Installs VANTREL for the user who runs it. Records are kept in the user's own folder, which is never touched.
;   makensis -D VERSION=1.2 -D FILES=folder -D LISTED=files.nsh -D INSTALLER=out.exe installer.nsi
; FILES: what is installed; LISTED: a macro with the lines that take exactly that away again.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
AllowSkipFiles off ; a file that cannot be written ends it, with status 2
RequestExecutionLevel user
ManifestDPIAware true
Name "VANTREL"
OutFile "${INSTALLER}"
InstallDir "$LOCALAPPDATA\Programs\VANTREL"
InstallDirRegKey HKCU "Software\VANTREL" "Folder"
BrandingText "VANTREL ${VERSION}"

!include MUI2.nsh
!include FileFunc.nsh
!include "${LISTED}"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\VANTREL"
!define MUI_ICON "${FILES}\vantrel.ico"
!define MUI_UNICON "${FILES}\vantrel.ico"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartFromMenu
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

VIAddVersionKey "ProductName" "VANTREL"
VIAddVersionKey "FileDescription" "VANTREL setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "Copyright 2026 The VANTREL developers"
VIProductVersion "${VERSION}.0.0"

Function StartFromMenu
    ExecShell "" "$SMPROGRAMS\VANTREL\VANTREL.lnk"
FunctionEnd

; Neither half of a program is left behind: it has to end before its files go, or others take their place. A file that is
; in use cannot be opened for writing. FOLDER: where they are.
!macro RequireEnded FOLDER
    Push "${FOLDER}\bench\visa64.dll"
    Push "${FOLDER}\vantrel.exe"
    Call ${UN}RequireUnused
    Call ${UN}RequireUnused
!macroend

!macro DefineRequireUnused
Function ${UN}RequireUnused
    Exch $R0
    IfFileExists "$R0" 0 unused
try:
    ClearErrors
    FileOpen $R1 "$R0" a
    IfErrors 0 close
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "VANTREL is running ($R0 is in use).$\r$\n$\r$\nStop its run, choose Exit, then press Retry." \
        /SD IDCANCEL IDRETRY try
    Abort "VANTREL is running. Nothing was changed."
close:
    FileClose $R1
unused:
    Pop $R0
FunctionEnd
!macroend

!define UN ""
!insertmacro DefineRequireUnused

Section
    ClearErrors
    SetOutPath "$INSTDIR"
    IfErrors 0 begin
    Abort "$INSTDIR cannot be made. Nothing was changed."
begin:
    !insertmacro RequireEnded "$INSTDIR"

    ; The version that is there takes its files away, wherever they are; what else lies beside them stays.
    ReadRegStr $0 HKCU "Software\VANTREL" "Folder"
    StrCmp $0 "" install
    IfFileExists "$0\uninstall.exe" 0 install
    !insertmacro RequireEnded "$0"
    StrCpy $1 1
    ExecWait '"$0\uninstall.exe" /S _?=$0' $1
    IntCmp $1 0 removed
    Abort "The version in $0 cannot be removed."
removed:
    Delete "$0\uninstall.exe"
    RMDir "$0"

install:
    SetOutPath "$INSTDIR"
    SetOverwrite on
    File /r "${FILES}\*"
    CreateDirectory "$PROFILE\VANTREL\db"

    ; The folder that is set here is the one that a shortcut starts its program in.
    SetOutPath "$PROFILE\VANTREL"
    CreateDirectory "$SMPROGRAMS\VANTREL"
    CreateShortcut "$SMPROGRAMS\VANTREL\VANTREL.lnk" "$INSTDIR\vantrel.exe" '--folder "$PROFILE\VANTREL"'
    CreateShortcut "$SMPROGRAMS\VANTREL\VANTREL on the simulated bench.lnk" "$INSTDIR\vantrel-bench.cmd" "" \
        "$INSTDIR\vantrel.exe" 0 SW_SHOWMINIMIZED
    CreateShortcut "$SMPROGRAMS\VANTREL\Guide.lnk" "$INSTDIR\doc\docs\guide.html"

    WriteUninstaller "$INSTDIR\uninstall.exe"
    WriteRegStr HKCU "Software\VANTREL" "Folder" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "VANTREL"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\vantrel.exe"
    WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The VANTREL developers"
    WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    IntFmt $0 "0x%08X" $0
    WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" "$0"
SectionEnd

!undef UN
!define UN "un."
!insertmacro DefineRequireUnused

; File by file: what else lies in the folder stays there, and with it the folder.
Section Uninstall
    !insertmacro RequireEnded "$INSTDIR"
    !insertmacro TakeFilesAway
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\VANTREL\VANTREL.lnk"
    Delete "$SMPROGRAMS\VANTREL\VANTREL on the simulated bench.lnk"
    Delete "$SMPROGRAMS\VANTREL\Guide.lnk"
    RMDir "$SMPROGRAMS\VANTREL"
    DeleteRegKey HKCU "${UNINSTALL}"
    DeleteRegKey HKCU "Software\VANTREL"
SectionEnd
