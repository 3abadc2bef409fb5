; SPDX-License-Identifier: GPL-3.0-or-later
; The Windows installer. build-installer defines VERSION, OUTFILE, LICENSE, ICON, INSTALL_LIST,
; UNINSTALL_LIST and COMPRESSOR, and TARGET for another kind of code than the usual one.

!ifdef TARGET
Target ${TARGET}
!endif
Unicode true
SetCompressor /SOLID ${COMPRESSOR}
ManifestDPIAware true

!include "MUI2.nsh"
!include "x64.nsh"
!include "FileFunc.nsh"

!define PRODUCT "Quorvel"
!define PROGRAM "Quorvel.exe"
!define UNINSTALLER "Uninstall.exe"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"

Name "${PRODUCT}"
OutFile "${OUTFILE}"
InstallDir "$PROGRAMFILES64\${PRODUCT}"
RequestExecutionLevel admin
BrandingText "${PRODUCT} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "FileDescription" "${PRODUCT} installer"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "Quorvel contributors, GPL-3.0-or-later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PROGRAM}"

!insertmacro MUI_PAGE_LICENSE "${LICENSE}"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "SimpChinese"

LangString NEEDS_64_BIT ${LANG_ENGLISH} "${PRODUCT} needs a 64-bit Windows."
LangString NEEDS_64_BIT ${LANG_SIMPCHINESE} "${PRODUCT} 需要 64 位 Windows。"
LangString CLOSE_PROGRAM ${LANG_ENGLISH} "${PRODUCT} is running. Close it, then try again."
LangString CLOSE_PROGRAM ${LANG_SIMPCHINESE} "${PRODUCT} 正在运行，请关闭后重试。"

; A running program keeps its file open: asks until it can be replaced, ends the installer when refused.
!macro WAIT_FOR_CLOSED_PROGRAM ID
  retry_${ID}:
    IfFileExists "$INSTDIR\${PROGRAM}" 0 closed_${ID}
    ClearErrors
    FileOpen $0 "$INSTDIR\${PROGRAM}" a
    IfErrors running_${ID}
    FileClose $0
    Goto closed_${ID}
  running_${ID}:
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(CLOSE_PROGRAM)" /SD IDCANCEL IDRETRY retry_${ID}
    SetErrorLevel 2
    Abort
  closed_${ID}:
!macroend

Function .onInit
  ${IfNot} ${RunningX64}
    MessageBox MB_OK|MB_ICONSTOP "$(NEEDS_64_BIT)" /SD IDOK
    SetErrorLevel 1
    Abort
  ${EndIf}
  SetRegView 64
  ; Where an older version is, unless the command line names another folder.
  ${If} $INSTDIR == "$PROGRAMFILES64\${PRODUCT}"
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 != ""
      StrCpy $INSTDIR $0
    ${EndIf}
  ${EndIf}
FunctionEnd

Function un.onInit
  SetRegView 64
FunctionEnd

Section "Install"
  SetShellVarContext all
  !insertmacro WAIT_FOR_CLOSED_PROGRAM install
  ; What an older version left is taken away by its own uninstaller, which knows its files.
  IfFileExists "$INSTDIR\${UNINSTALLER}" 0 +2
    ExecWait '"$INSTDIR\${UNINSTALLER}" /S _?=$INSTDIR'

  SetOutPath "$INSTDIR"
  !include "${INSTALL_LIST}"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\${PROGRAM}"

  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${PROGRAM}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "Quorvel contributors"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" "$0"
SectionEnd

; Removes what was installed and nothing else: a folder that holds files of somebody else stays, and so do
; the readings and settings in the user's Documents folder.
Section "Uninstall"
  SetShellVarContext all
  !insertmacro WAIT_FOR_CLOSED_PROGRAM uninstall
  !include "${UNINSTALL_LIST}"
  Delete "$INSTDIR\${UNINSTALLER}"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${PRODUCT}.lnk"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
