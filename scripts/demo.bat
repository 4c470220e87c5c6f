@echo off
rem The main job on a real drawing: opens examples\building.dxf, loads the module, thaws, unlocks and shows every layer,
rem saves under another name, and shows what changed in the file. It lies in the folder of the installed package.
setlocal
cd /d "%~dp0"
chcp 65001 >nul
echo == The run: show-everything.scr on building.dxf
bin\qrsconsole --settings demo.ini -s examples\show-everything.scr -o shown.dxf examples\building.dxf
if errorlevel 1 exit /b 1
echo == What changed in the drawing
bin\qrsconsole --compare examples\building.dxf shown.dxf
echo == Opened again and saved: no difference
bin\qrsconsole --settings demo.ini -o again.dxf shown.dxf
if errorlevel 1 exit /b 1
bin\qrsconsole --compare shown.dxf again.dxf
if errorlevel 1 exit /b 1
del demo.ini demo.ini.lock again.dxf 2>nul
echo The result is %~dp0shown.dxf
