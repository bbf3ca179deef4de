; The installer for one user. package.sh defines VERSION, STAGE, UNINSTALL_FILES, ICON, SIZE_KB and OUTPUT.
; Silent: setup.exe /S [/D=C:\folder], last and without quotes; uninstall.exe /S.
Unicode true
Target amd64-unicode
RequestExecutionLevel user
SetCompressor /SOLID lzma
ManifestDPIAware true

!include MUI2.nsh
!include FileFunc.nsh

!define PROGRAM "Velmora"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PROGRAM}"
!define SESSION_TYPE "Velmora.Session"
!define WORKSPACE_TYPE "Velmora.Workspace"

Name "${PROGRAM} ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\${PROGRAM}"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${PROGRAM} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${PROGRAM}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "${PROGRAM} setup"
VIAddVersionKey "CompanyName" "The Velmora developers"
VIAddVersionKey "LegalCopyright" "Copyright (c) 2026 The Velmora developers; MIT License"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\velmora.exe"
!insertmacro MUI_PAGE_LICENSE "${STAGE}\licences\velmora.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "SimpChinese"

LangString Running ${LANG_ENGLISH} "Velmora is running. Close it and try again."
LangString Running ${LANG_SIMPCHINESE} "Velmora 正在运行。请将其关闭后重试。"
LangString SessionType ${LANG_ENGLISH} "Velmora session"
LangString SessionType ${LANG_SIMPCHINESE} "Velmora 会话"
LangString WorkspaceType ${LANG_ENGLISH} "Velmora workspace"
LangString WorkspaceType ${LANG_SIMPCHINESE} "Velmora 工作区"

; Asks to close a program that is still in use; a silent run gives up with status 3 in its place.
!macro WaitUntilClosed un
Function ${un}WaitUntilClosed
    again:
    IfFileExists "$INSTDIR\velmora.exe" 0 closed
    ClearErrors
    FileOpen $0 "$INSTDIR\velmora.exe" a
    IfErrors inUse
    FileClose $0
    closed:
    Return
    inUse:
    IfSilent giveUp
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(Running)" IDRETRY again
    giveUp:
    SetErrorLevel 3
    Quit
FunctionEnd
!macroend
!insertmacro WaitUntilClosed ""
!insertmacro WaitUntilClosed "un."

; Lets files that end with `suffix` be opened by the program, called with `arguments`.
!macro AddFileType type suffix name arguments
    WriteRegStr HKCU "Software\Classes\${type}" "" "${name}"
    WriteRegStr HKCU "Software\Classes\${type}\DefaultIcon" "" "$INSTDIR\velmora.exe,0"
    WriteRegStr HKCU "Software\Classes\${type}\shell\open\command" "" '"$INSTDIR\velmora.exe" ${arguments}'
    WriteRegStr HKCU "Software\Classes\${suffix}" "" "${type}"
!macroend

; Takes that back; a suffix that belongs to another program by now stays there.
!macro RemoveFileType type suffix
    ReadRegStr $0 HKCU "Software\Classes\${suffix}" ""
    StrCmp $0 "${type}" 0 +2
    DeleteRegKey HKCU "Software\Classes\${suffix}"
    DeleteRegKey HKCU "Software\Classes\${type}"
!macroend

Section
    SetShellVarContext current
    InitPluginsDir
    Call WaitUntilClosed
    ; An older version takes its files away first: the new one may have others.
    IfFileExists "$INSTDIR\uninstall.exe" 0 +3
    CopyFiles /SILENT "$INSTDIR\uninstall.exe" "$PLUGINSDIR\uninstall.exe"
    ExecWait '"$PLUGINSDIR\uninstall.exe" /S /KEEP _?=$INSTDIR'

    SetOutPath "$INSTDIR"
    File /r "${STAGE}\*"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortCut "$SMPROGRAMS\${PROGRAM}.lnk" "$INSTDIR\velmora.exe"

    !insertmacro AddFileType "${SESSION_TYPE}" .kvsession "$(SessionType)" '"%1"'
    !insertmacro AddFileType "${WORKSPACE_TYPE}" .kvworkspace "$(WorkspaceType)" '--workspace "%1"'

    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${PROGRAM}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\velmora.exe,0"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Velmora developers"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE_KB}
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd

; Removes an entry of Explorer's context menu that starts this very program; that of another copy stays.
!macro RemoveVerb class verb
    ReadRegStr $0 HKCU "Software\Classes\${class}\shell\${verb}" "Icon"
    StrCmp $0 "$INSTDIR\velmora.exe,0" 0 +2
    DeleteRegKey HKCU "Software\Classes\${class}\shell\${verb}"
!macroend

Section "Uninstall"
    SetShellVarContext current
    Call un.WaitUntilClosed
    !include "${UNINSTALL_FILES}"
    Delete "$INSTDIR\uninstall.exe"
    ${GetParameters} $1
    ClearErrors
    ${GetOptions} $1 "/KEEP" $2 ; a newer version is about to take the place: what leads to the program stays
    IfErrors 0 done
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\${PROGRAM}.lnk"
    !insertmacro RemoveVerb "*" VelmoraAsLeft
    !insertmacro RemoveVerb "*" VelmoraAsRight
    !insertmacro RemoveVerb Directory VelmoraAsLeft
    !insertmacro RemoveVerb Directory VelmoraAsRight
    !insertmacro RemoveFileType "${SESSION_TYPE}" .kvsession
    !insertmacro RemoveFileType "${WORKSPACE_TYPE}" .kvworkspace
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
    done:
SectionEnd
