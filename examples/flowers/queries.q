lload "flowers.ddb"
learn ;
guess ["5" "middle" "round" "sweet"] ;
rank ["6" "tall" "narrow" "none"] ;
$ flowers ;
right_ones ;
