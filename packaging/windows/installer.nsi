; The installer for one user. package.sh defines VERSION, STAGE, INSTALL_FILES, UNINSTALL_FILES, ICON, SIZE_KB and
; OUTPUT.
; Silent: setup.exe /S [/EXPLORER] [/PATH] [/D=C:\folder], the last without quotes; uninstall.exe /S.
Unicode true
Target amd64-unicode
RequestExecutionLevel user
SetCompressor /SOLID lzma
ManifestDPIAware true

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh

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
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\velmora.exe"
!insertmacro MUI_PAGE_LICENSE "${STAGE}\licences\velmora.txt"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "SimpChinese"

LangString Running ${LANG_ENGLISH} "Velmora is running. Close it and try again."
LangString Running ${LANG_SIMPCHINESE} "Velmora 正在运行。请将其关闭后重试。"
LangString ExplorerEntries ${LANG_ENGLISH} "Explorer context menu"
LangString ExplorerEntries ${LANG_SIMPCHINESE} "资源管理器右键菜单"
LangString SearchPath ${LANG_ENGLISH} "velmora-cli on the PATH"
LangString SearchPath ${LANG_SIMPCHINESE} "将 velmora-cli 加入 PATH"
LangString AboutProgram ${LANG_ENGLISH} "The program with its window, and velmora-cli for the command line."
LangString AboutProgram ${LANG_SIMPCHINESE} "带窗口的程序，以及用于命令行的 velmora-cli。"
LangString AboutExplorerEntries ${LANG_ENGLISH} "Files and folders are chosen as the left and the right side in Explorer. The options of the program switch this, too."
LangString AboutExplorerEntries ${LANG_SIMPCHINESE} "在资源管理器中将文件和文件夹选为左侧和右侧。也可在程序的选项中开关。"
LangString AboutSearchPath ${LANG_ENGLISH} "velmora-cli is found in every command prompt that is opened from now on."
LangString AboutSearchPath ${LANG_SIMPCHINESE} "此后打开的每个命令提示符都能找到 velmora-cli。"
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

; Adds an entry to Explorer's context menu, as the program's options do.
!macro AddVerb class verb label option
    WriteRegStr HKCU "Software\Classes\${class}\shell\${verb}" "" "${label}"
    WriteRegStr HKCU "Software\Classes\${class}\shell\${verb}" "Icon" "$INSTDIR\velmora.exe,0"
    WriteRegStr HKCU "Software\Classes\${class}\shell\${verb}\command" "" '"$INSTDIR\velmora.exe" ${option} "%1"'
!macroend

; Removes an entry of Explorer's context menu that starts this very program; that of another copy stays.
!macro RemoveVerb class verb
    ReadRegStr $0 HKCU "Software\Classes\${class}\shell\${verb}" "Icon"
    StrCmp $0 "$INSTDIR\velmora.exe,0" 0 +2
    DeleteRegKey HKCU "Software\Classes\${class}\shell\${verb}"
!macroend
!macro RemoveVerbs
    !insertmacro RemoveVerb "*" VelmoraAsLeft
    !insertmacro RemoveVerb "*" VelmoraAsRight
    !insertmacro RemoveVerb Directory VelmoraAsLeft
    !insertmacro RemoveVerb Directory VelmoraAsRight
!macroend

; Looks for $INSTDIR on the search path of the user and, when $9 is "add" or "remove", changes that. Leaves in $8 whether it was
; there, as 1 or 0. The path goes through memory of the system: a string of an installer is cut off after 1024 characters.
!macro EditPath un
Function ${un}EditPath
    StrCpy $8 0
    System::Call 'advapi32::RegOpenKeyExW(p -2147483647, w "Environment", i 0, i 3, *p .r0) i .r1'
    ${If} $1 <> 0
        Return
    ${EndIf}
    StrCpy $3 0
    System::Call 'advapi32::RegQueryValueExW(p r0, w "Path", p 0, *i .r2, p 0, *i .r3) i .r1'
    ${If} $1 = 2 ; there is none
        StrCpy $2 2 ; REG_EXPAND_SZ, as Windows makes it
        StrCpy $3 0
    ${ElseIf} $1 <> 0
    ${OrIf} $2 < 1
    ${OrIf} $2 > 2 ; no text
        Goto close
    ${EndIf}
    ; Two buffers with room for ";", the path, ";", the folder and an end.
    IntOp $4 $3 + 4096
    System::Call 'kernel32::GlobalAlloc(i 0x40, p r4) p .r5'
    System::Call 'kernel32::GlobalAlloc(i 0x40, p r4) p .r6'
    ${If} $5 P= 0
    ${OrIf} $6 P= 0
        Goto close
    ${EndIf}
    System::Call 'kernel32::lstrcpyW(p r5, w ";")'
    IntPtrOp $7 $5 + 2
    ${If} $3 > 0
        System::Call 'advapi32::RegQueryValueExW(p r0, w "Path", p 0, p 0, p r7, *i r3) i .r1'
        ${If} $1 <> 0
            Goto free
        ${EndIf}
    ${EndIf}
    System::Call 'kernel32::lstrlenW(p r7) i .R0' ; of the path alone
    System::Call 'kernel32::lstrcatW(p r5, w ";")'
    System::Call 'shlwapi::StrStrIW(p r5, w ";$INSTDIR;") p .r1'
    ${If} $1 P<> 0
        StrCpy $8 1
    ${EndIf}

    ${If} $9 == "add"
    ${AndIf} $8 = 0
        ${If} $R0 > 0
            System::Call 'kernel32::lstrcpyW(p r6, p r5)'
        ${Else}
            System::Call 'kernel32::lstrcpyW(p r6, w ";")'
        ${EndIf}
        System::Call 'kernel32::lstrcatW(p r6, w "$INSTDIR")'
    ${ElseIf} $9 == "remove"
    ${AndIf} $8 = 1
        ; What stands before, then what stands behind, from its ";" on; without the ";" at the end that was put there above.
        IntPtrOp $4 $1 - $5
        IntOp $4 $4 / 2
        IntOp $4 $4 + 1
        System::Call 'kernel32::lstrcpynW(p r6, p r5, i r4)'
        StrLen $4 ";$INSTDIR"
        IntOp $4 $4 * 2
        IntPtrOp $1 $1 + $4
        System::Call 'kernel32::lstrcatW(p r6, p r1)'
        System::Call 'kernel32::lstrlenW(p r6) i .r4'
        IntOp $4 $4 - 1
        IntOp $4 $4 * 2
        IntPtrOp $1 $6 + $4
        System::Call '*$1(&i2 0)'
    ${Else}
        Goto free
    ${EndIf}
    IntPtrOp $7 $6 + 2 ; behind the ";" at the begin
    System::Call 'kernel32::lstrlenW(p r6) i .R0'
    ${If} $R0 > 1
        IntOp $R0 $R0 * 2 ; bytes, with the end in place of the ";"
        System::Call 'advapi32::RegSetValueExW(p r0, w "Path", i 0, i r2, p r7, i R0) i .r1'
    ${Else}
        System::Call 'advapi32::RegDeleteValueW(p r0, w "Path") i .r1'
    ${EndIf}
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=5000
    free:
    System::Call 'kernel32::GlobalFree(p r5)'
    System::Call 'kernel32::GlobalFree(p r6)'
    close:
    System::Call 'advapi32::RegCloseKey(p r0)'
FunctionEnd
!macroend
!insertmacro EditPath ""
!insertmacro EditPath "un."

Section "${PROGRAM}" ProgramSection
    SectionIn RO
    SetShellVarContext current
    InitPluginsDir
    Call WaitUntilClosed
    ; An older version takes its files away first: the new one may have others.
    IfFileExists "$INSTDIR\uninstall.exe" 0 +3
    CopyFiles /SILENT "$INSTDIR\uninstall.exe" "$PLUGINSDIR\uninstall.exe"
    ExecWait '"$PLUGINSDIR\uninstall.exe" /S /KEEP _?=$INSTDIR'

    !include "${INSTALL_FILES}"
    SetOutPath "$INSTDIR"
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
SectionEnd

Section /o "$(ExplorerEntries)" ExplorerSection
    !insertmacro AddVerb "*" VelmoraAsLeft "用 Velmora 选为比较左侧" --as-left
    !insertmacro AddVerb "*" VelmoraAsRight "用 Velmora 选为比较右侧" --as-right
    !insertmacro AddVerb Directory VelmoraAsLeft "用 Velmora 选为比较左侧" --as-left
    !insertmacro AddVerb Directory VelmoraAsRight "用 Velmora 选为比较右侧" --as-right
SectionEnd

Section /o "$(SearchPath)" PathSection
    StrCpy $9 add
    Call EditPath
SectionEnd

Section # what an older version has put there and is not wanted any more goes
    ${IfNot} ${SectionIsSelected} ${ExplorerSection}
        !insertmacro RemoveVerbs
    ${EndIf}
    ${IfNot} ${SectionIsSelected} ${PathSection}
        StrCpy $9 remove
        Call EditPath
    ${EndIf}
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${ProgramSection} "$(AboutProgram)"
    !insertmacro MUI_DESCRIPTION_TEXT ${ExplorerSection} "$(AboutExplorerEntries)"
    !insertmacro MUI_DESCRIPTION_TEXT ${PathSection} "$(AboutSearchPath)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; Chosen is what the command line asks for, and what is there already.
Function .onInit
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/EXPLORER" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${ExplorerSection}
    ${EndIf}
    ReadRegStr $1 HKCU "Software\Classes\*\shell\VelmoraAsLeft" "Icon"
    ${If} $1 == "$INSTDIR\velmora.exe,0"
        !insertmacro SelectSection ${ExplorerSection}
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/PATH" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${PathSection}
    ${EndIf}
    StrCpy $9 look
    Call EditPath
    ${If} $8 = 1
        !insertmacro SelectSection ${PathSection}
    ${EndIf}
FunctionEnd

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
    !insertmacro RemoveVerbs
    StrCpy $9 remove
    Call un.EditPath
    !insertmacro RemoveFileType "${SESSION_TYPE}" .kvsession
    !insertmacro RemoveFileType "${WORKSPACE_TYPE}" .kvworkspace
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
    done:
SectionEnd
