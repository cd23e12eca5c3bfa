; SPDX-FileCopyrightText: the Tarvell authors
; SPDX-License-Identifier: GPL-3.0-or-later
;
; The installer. scripts/windows gives VERSION, PROGRAM (the folder with what is installed), REMOVAL
; (the commands that remove exactly that), LICENSE, ICON and OUTPUT. Without a window: /S, and /AllUsers or /CurrentUser.
Target amd64-unicode
ManifestDPIAware true
SetCompressor /SOLID lzma

!define NAME "Tarvell"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh

Name "${NAME}"
OutFile "${OUTPUT}"
BrandingText "${NAME} ${VERSION}"
VIProductVersion "${VERSION}.0.0"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs ${NAME}"
VIAddVersionKey CompanyName "the Tarvell authors"
VIAddVersionKey LegalCopyright "the Tarvell authors, GNU General Public License 3 or later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!insertmacro MUI_PAGE_LICENSE "${LICENSE}"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\tarvell.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A running program cannot be replaced or removed.
!macro StopWhileRunning verb
  IfFileExists "$INSTDIR\tarvell.exe" 0 free_${verb}
  ClearErrors
  FileOpen $0 "$INSTDIR\tarvell.exe" a
  IfErrors 0 close_${verb}
  MessageBox MB_OK|MB_ICONSTOP "${NAME} is running, or you have no permission to change $INSTDIR. Close ${NAME}, then try again." /SD IDOK
  SetErrorLevel 2
  Abort
  close_${verb}:
  FileClose $0
  free_${verb}:
!macroend

Function .onInit
  SetRegView 64
  !insertmacro MULTIUSER_INIT
FunctionEnd

Function un.onInit
  SetRegView 64
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

Section "Install"
  !insertmacro StopWhileRunning install
  ; Nothing of an earlier version stays: its own uninstaller knows what it has installed. With _?= it
  ; runs where it is, so that this waits for its end.
  IfFileExists "$INSTDIR\uninstall.exe" 0 +2
    ExecWait '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S _?=$INSTDIR'
  SetOutPath "$INSTDIR"
  File /r "${PROGRAM}\*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateDirectory "$SMPROGRAMS\${NAME}"
  CreateShortcut "$SMPROGRAMS\${NAME}\${NAME}.lnk" "$INSTDIR\tarvell.exe"
  CreateShortcut "$SMPROGRAMS\${NAME}\${NAME} handbook.lnk" "$INSTDIR\handbook\handbook.html"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "${NAME}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\tarvell.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher "the Tarvell authors"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize $0
SectionEnd

; The data, the settings and the history are not in the program's folder, and stay.
Section "Uninstall"
  !insertmacro StopWhileRunning remove
  !include "${REMOVAL}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${NAME}\${NAME}.lnk"
  Delete "$SMPROGRAMS\${NAME}\${NAME} handbook.lnk"
  RMDir "$SMPROGRAMS\${NAME}"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd
