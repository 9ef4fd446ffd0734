; Installs VANTREL for the user who runs it. Records are kept in the user's own folder, which is never touched.
;   makensis -D VERSION=1.2 -D FILES=folder -D LISTED=files.nsh -D INSTALLER=out.exe installer.nsi
; FILES: what is installed; LISTED: a macro with the lines that take exactly that away again.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
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

Section
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

; File by file: what else lies in the folder stays there, and with it the folder.
Section Uninstall
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
