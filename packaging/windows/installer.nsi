; The installer: for one user, without an administrator. packaging/make-windows gives VERSION, the folder RELEASE with what
; is installed, FILES with the commands that remove exactly that, ICON, and OUT.
Unicode true
Target amd64-unicode
Name "Zanto"
OutFile "${OUT}"
Icon "${ICON}"
UninstallIcon "${ICON}"
RequestExecutionLevel user
SetCompressor /SOLID lzma
ManifestDPIAware true
InstallDir "$LOCALAPPDATA\Programs\Zanto"
InstallDirRegKey HKCU "Software\Zanto" "Folder"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Zanto"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installs Zanto"
VIAddVersionKey "LegalCopyright" "The Zanto developers"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zanto"
!define MENU "$SMPROGRAMS\Zanto"
!define OWN "$APPDATA\zanto"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

Section
    ; What another version had and this one has not would stay for ever. The uninstaller keeps itself while it runs there.
    ReadRegStr $0 HKCU "Software\Zanto" "Folder"
    StrCmp $0 "" nothing_before
    IfFileExists "$0\uninstall.exe" 0 nothing_before
        ExecWait '"$0\uninstall.exe" /S _?=$0'
        Delete "$0\uninstall.exe"
        RMDir "$0"
    nothing_before:
    SetOutPath "$INSTDIR"
    File /r "${RELEASE}/*"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateDirectory "${OWN}\Songs"

    ; Where a shortcut's program starts is the folder of SetOutPath.
    CreateDirectory "${MENU}"
    CreateShortcut "${MENU}\Zanto.lnk" "$INSTDIR\zanto.exe" "--from-menu"
    CreateShortcut "${MENU}\Zanto with the fine ear.lnk" "$INSTDIR\zanto.exe" "--from-menu --ear fine"
    CreateShortcut "${MENU}\Microphone check.lnk" "$SYSDIR\cmd.exe" '/k ""$INSTDIR\zanto-mic.exe" check"' \
        "$INSTDIR\zanto-mic.exe"
    CreateShortcut "${MENU}\My songs.lnk" "${OWN}\Songs"

    WriteRegStr HKCU "Software\Zanto" "Folder" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Zanto"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\zanto.exe"
    WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The Zanto developers"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section "Uninstall"
    !include "${FILES}"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    ; Empty where nothing else is installed for this user alone.
    RMDir "$LOCALAPPDATA\Programs"

    Delete "${MENU}\Zanto.lnk"
    Delete "${MENU}\Zanto with the fine ear.lnk"
    Delete "${MENU}\Microphone check.lnk"
    Delete "${MENU}\My songs.lnk"
    RMDir "${MENU}"
    ; Songs of the player's own stay; empty folders go.
    RMDir "${OWN}\Songs"
    RMDir "${OWN}"

    DeleteRegKey HKCU "Software\Zanto"
    DeleteRegKey HKCU "${UNINSTALL}"
SectionEnd
