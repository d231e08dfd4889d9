; The installer of Corvane for one user: no administrator, nothing outside the user's own folders and
; registry.  packaging/windows/pack.sh compiles it, and gives it by -D
;   VERSION    "0.997"
;   NUMBERS    "0.997.0.0", the same for version resources
;   KILOBYTES  what will be installed
;   FILES      a file of macros with the names of all that is installed and removed
;   ICON       corvane.ico
;   SIDE       a picture of 164x314 for the last page
;   LICENCE    the text of the first page
;   OUTPUT     the installer
;   TOOLS      defined when the outside tools are in it
;
; By hand and not by CPack: that one's installers are for the machine (HKLM, Program Files), and
; their uninstallers remove whole folders.  This program folder may hold a person's own files.
;
; Exit status of a silent run ("/S", with "/D=folder" last for another folder): 0 done, 1 or 2
; cancelled or failed, 3 the program is running, 4 not a folder of its own, 5 Windows is too old.

Target amd64-unicode
; Three programs hold the same decoders: what the packer remembers reaches from one to the next.
SetCompressor /SOLID lzma
SetCompressorDictSize 64
ManifestDPIAware true
ManifestSupportedOS Win10
RequestExecutionLevel user
AllowSkipFiles off

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include Sections.nsh
!include WinVer.nsh
!include "${FILES}"

!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Corvane"
!define CLASSES "Software\Classes"
!define KIND "cvp_auto_file"

Name "Corvane ${VERSION}"
Caption "Corvane ${VERSION} setup"
BrandingText "Corvane ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Corvane"
; An upgrade goes where the earlier version stands.
InstallDirRegKey HKCU "${ENTRY}" InstallLocation

VIProductVersion "${NUMBERS}"
VIFileVersion "${NUMBERS}"
VIAddVersionKey ProductName "Corvane"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs Corvane, DVD-Video authoring"
VIAddVersionKey CompanyName "The Corvane developers"
VIAddVersionKey LegalCopyright "(C) 2026 The Corvane developers, GNU GPL 2 or later"

; Pages -------------------------------------------------------------------------------------------

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start Corvane"
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram

; The licence grants rights and asks for no consent.
!define MUI_PAGE_HEADER_TEXT "Licence"
!define MUI_PAGE_HEADER_SUBTEXT "Corvane is free software."
!define MUI_LICENSEPAGE_TEXT_TOP "You may use it for any purpose.  What you may do beyond that:"
!define MUI_LICENSEPAGE_TEXT_BOTTOM "Nothing has to be accepted in order to use the program."
!define MUI_LICENSEPAGE_BUTTON "$(^NextBtn)"
!insertmacro MUI_PAGE_LICENSE "${LICENCE}"
!insertmacro MUI_PAGE_COMPONENTS
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE English

; What both programs do ---------------------------------------------------------------------------

; Puts the name into $0 when the file is there and in use.
!macro LookAt NAME
  ${If} ${FileExists} "$INSTDIR\${NAME}"
    ClearErrors
    FileOpen $1 "$INSTDIR\${NAME}" a
    ${If} ${Errors}
      StrCpy $0 "${NAME}"
    ${Else}
      FileClose $1
    ${EndIf}
  ${EndIf}
!macroend

; Windows replaces no program that runs: asks to close it, or ends.
!macro NotWhileRunning UN
  Function ${UN}NotWhileRunning
    look:
    StrCpy $0 ""
    !insertmacro EachProgram LookAt
    ${If} $0 != ""
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$INSTDIR\$0 is running.$\n$\nPlease close \
          Corvane, wait until authoring has finished, and try again." /SD IDCANCEL IDRETRY look
      SetErrorLevel 3
      Quit
    ${EndIf}
  FunctionEnd
!macroend
!insertmacro NotWhileRunning ""
!insertmacro NotWhileRunning "un."

; Explorer shows icons and opens projects by what stands there now.
!macro TellExplorer
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

; Installing --------------------------------------------------------------------------------------

; After a run with clean-up the program removes all .xml, .bat and .png files of its folder, so a
; folder that has some and no Corvane is no place for it.
Function IsOfOthers
  StrCpy $0 no
  ${IfNot} ${FileExists} "$INSTDIR\bin\conspawn.exe"
    ${If} ${FileExists} "$INSTDIR\*.xml"
    ${OrIf} ${FileExists} "$INSTDIR\*.bat"
    ${OrIf} ${FileExists} "$INSTDIR\*.png"
      StrCpy $0 yes
    ${EndIf}
  ${EndIf}
FunctionEnd

Function CheckFolder
  Call IsOfOthers
  ${If} $0 == yes
    MessageBox MB_OK|MB_ICONEXCLAMATION "The folder $INSTDIR holds .xml, .bat or .png files that \
        are not Corvane's.$\n$\nCorvane needs a folder of its own: after authoring it removes all \
        files of these kinds there.  Please choose another one." /SD IDOK
    Abort
  ${EndIf}
FunctionEnd

Function StartProgram
  SetOutPath "$DOCUMENTS"
  Exec '"$INSTDIR\corvane.exe"'
FunctionEnd

Section "Corvane" SecProgram
  SectionIn RO
  Call IsOfOthers
  ${If} $0 == yes
    DetailPrint "$INSTDIR holds files of other programs."
    SetErrorLevel 4
    Quit
  ${EndIf}
  Call NotWhileRunning

  ; An earlier version knows its files best.  It leaves tools, settings and entries alone then.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    DetailPrint "Removing the earlier version"
    ExecWait '"$INSTDIR\uninstall.exe" /S /UPGRADE _?=$INSTDIR'
  ${EndIf}

  !insertmacro InstallProgram
  !ifdef TOOLS
    !insertmacro InstallTools
  !endif
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  ; Shortcuts start the program where a person's files are.
  SetOutPath "$DOCUMENTS"
  CreateDirectory "$SMPROGRAMS\Corvane"
  CreateShortcut "$SMPROGRAMS\Corvane\Corvane.lnk" "$INSTDIR\corvane.exe" "" \
      "$INSTDIR\corvane.exe" 0 SW_SHOWNORMAL "" "Author DVD-Video discs"
  CreateShortcut "$SMPROGRAMS\Corvane\Uninstall Corvane.lnk" "$INSTDIR\uninstall.exe"

  WriteRegStr HKCU "${ENTRY}" DisplayName "Corvane ${VERSION}"
  WriteRegStr HKCU "${ENTRY}" DisplayVersion "${VERSION}"
  WriteRegStr HKCU "${ENTRY}" Publisher "The Corvane developers"
  WriteRegStr HKCU "${ENTRY}" DisplayIcon "$INSTDIR\corvane.exe,0"
  WriteRegStr HKCU "${ENTRY}" InstallLocation "$INSTDIR"
  WriteRegStr HKCU "${ENTRY}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${ENTRY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${ENTRY}" EstimatedSize ${KILOBYTES}
  WriteRegDWORD HKCU "${ENTRY}" NoModify 1
  WriteRegDWORD HKCU "${ENTRY}" NoRepair 1
SectionEnd

Section "Open projects (.cvp) with Corvane" SecProjects
  WriteRegStr HKCU "${CLASSES}\.cvp" "" "${KIND}"
  WriteRegStr HKCU "${CLASSES}\${KIND}" "" "corvane project"
  WriteRegDWORD HKCU "${CLASSES}\${KIND}" EditFlags 0
  WriteRegDWORD HKCU "${CLASSES}\${KIND}" BrowserFlags 8
  WriteRegStr HKCU "${CLASSES}\${KIND}\DefaultIcon" "" "$INSTDIR\corvane.exe,0"
  WriteRegStr HKCU "${CLASSES}\${KIND}\shell" "" ""
  WriteRegStr HKCU "${CLASSES}\${KIND}\shell\open\command" "" '"$INSTDIR\corvane.exe" "%1"'
  !insertmacro TellExplorer
SectionEnd

Section /o "Shortcut on the desktop" SecDesktop
  SetOutPath "$DOCUMENTS"
  CreateShortcut "$DESKTOP\Corvane.lnk" "$INSTDIR\corvane.exe" "" "$INSTDIR\corvane.exe" 0 \
      SW_SHOWNORMAL "" "Author DVD-Video discs"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !ifdef TOOLS
    !insertmacro MUI_DESCRIPTION_TEXT ${SecProgram} "The program, and the tools that make a disc."
  !else
    !insertmacro MUI_DESCRIPTION_TEXT ${SecProgram} "The program, without the tools that make a \
        disc: put yours into its folder bin."
  !endif
  !insertmacro MUI_DESCRIPTION_TEXT ${SecProjects} "A double click on a project starts Corvane \
      with it."
  !insertmacro MUI_DESCRIPTION_TEXT ${SecDesktop} "Besides the one in the start menu."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; Whoever has given project files to another program since keeps it so.
Function .onInit
  ; Earlier ones give no program UTF-8 as its code page (src/platform/system_version.h).
  ${IfNot} ${AtLeastWin10}
  ${OrIfNot} ${AtLeastBuild} 18362
    MessageBox MB_OK|MB_ICONSTOP "Corvane needs Windows 10, version 1903, or later." /SD IDOK
    SetErrorLevel 5
    Quit
  ${EndIf}
  ReadRegStr $0 HKCU "${ENTRY}" InstallLocation
  ReadRegStr $1 HKCU "${CLASSES}\.cvp" ""
  ${If} $0 != ""
  ${AndIf} $1 != ""
  ${AndIf} $1 != "${KIND}"
    !insertmacro UnselectSection ${SecProjects}
  ${EndIf}
FunctionEnd

; Uninstalling ------------------------------------------------------------------------------------

; The folder is compared with what the entries say.
Function un.onInit
  StrCpy $0 "$INSTDIR" 1 -1
  ${If} $0 == "\"
    StrCpy $INSTDIR "$INSTDIR" -1
  ${EndIf}
FunctionEnd

; What the program writes into its folder, by name: anything else there is somebody's own.
Function un.RemoveMade
  Delete "$INSTDIR\process.bat"
  Delete "$INSTDIR\config.xml"
  Delete "$INSTDIR\fake.png"
  Delete "$INSTDIR\fake.xml"
  Delete "$INSTDIR\layout.html"
  Delete "$INSTDIR\layoutconfig.xml"
  Delete "$INSTDIR\extension.reg"
  Delete "$INSTDIR\removeextension.reg"
  Delete "$INSTDIR\CorvaneLOG.txt"
  Delete "$INSTDIR\CorvaneLOG.txt.part"
  Delete "$INSTDIR\import.bat"
  Delete "$INSTDIR\CorvaneIMPORT.txt"
  Delete "$INSTDIR\CorvaneIMPORT.txt.part"
  Delete "$INSTDIR\menus.bat"
  Delete "$INSTDIR\CorvaneMENUS.txt"
  Delete "$INSTDIR\CorvaneMENUS.txt.part"
  RMDir /r "$INSTDIR\menu-pages"
  Delete "$INSTDIR\import-speeds.txt"
  Delete "$INSTDIR\unfinished-import.txt"
  Delete "$INSTDIR\speeds.txt"
  Delete "$INSTDIR\still.jpg"
  Delete "$INSTDIR\foreseen.xml"
  Delete "$INSTDIR\findings.xml"
  Delete "$INSTDIR\updatecodelog.txt"
  Delete "$INSTDIR\corvane.lock"
  Delete "$INSTDIR\unfinished.txt"
  ; If it is empty; projects in it were never saved.
  RMDir "$INSTDIR\kept"
  ; Of 99 titles and menus and 32 subtitles each; a disc has no more.
  ${For} $1 1 99
    Delete "$INSTDIR\menu$1.xml"
    Delete "$INSTDIR\highlight$1.png"
    Delete "$INSTDIR\select$1.png"
    ${If} ${FileExists} "$INSTDIR\sub$1-*.xml"
      ${For} $2 1 32
        Delete "$INSTDIR\sub$1-$2.xml"
      ${Next}
    ${EndIf}
  ${Next}
FunctionEnd

; Only what still leads here: "register .cvp extension" writes the command without the second pair
; of quotes.
Function un.RemoveAssociation
  ReadRegStr $0 HKCU "${CLASSES}\${KIND}\shell\open\command" ""
  ${If} $0 != '"$INSTDIR\corvane.exe" "%1"'
  ${AndIf} $0 != '"$INSTDIR\corvane.exe" %1'
    Return
  ${EndIf}
  DeleteRegKey HKCU "${CLASSES}\${KIND}"
  ReadRegStr $0 HKCU "${CLASSES}\.cvp" ""
  ${If} $0 == "${KIND}"
    DeleteRegValue HKCU "${CLASSES}\.cvp" ""
    DeleteRegKey /ifempty HKCU "${CLASSES}\.cvp"
  ${EndIf}
  !insertmacro TellExplorer
FunctionEnd

; They may by now belong to a Corvane in another folder.
Function un.RemoveEntries
  ReadRegStr $0 HKCU "${ENTRY}" InstallLocation
  ${If} $0 != "$INSTDIR"
    Return
  ${EndIf}
  Delete "$SMPROGRAMS\Corvane\Corvane.lnk"
  Delete "$SMPROGRAMS\Corvane\Uninstall Corvane.lnk"
  RMDir "$SMPROGRAMS\Corvane"
  Delete "$DESKTOP\Corvane.lnk"
  DeleteRegKey HKCU "${ENTRY}"
FunctionEnd

; The settings of the program stay, as do all folders and files that it was not installed with.
Section Uninstall
  SetOutPath "$TEMP"
  Call un.NotWhileRunning
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UPGRADE" $1
  ${If} ${Errors}
    Call un.RemoveAssociation
    Call un.RemoveEntries
    Call un.RemoveMade
    ${If} ${FileExists} "$INSTDIR\bin\tools.txt"
      !insertmacro RemoveTools
    ${EndIf}
    Delete "$INSTDIR\uninstall.exe"
  ${EndIf}
  !insertmacro RemoveProgram
  RMDir "$INSTDIR"
  ${If} ${Errors}
  ${AndIf} ${FileExists} "$INSTDIR\*.*"
    DetailPrint "$INSTDIR holds files that were not installed with Corvane.  They are left there."
  ${EndIf}
SectionEnd
