lload "life.ddb"
picture blinker ;
picture (next blinker) ;
$ (generation #4 glider) ;
picture (generation #4 glider) ;
