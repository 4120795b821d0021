MEVRIGHTS ; The signed-on user's permissions, checked at every save whatever the client has checked before
 ;
REFUSED(kind) ; The error reply if the user may not change records of a kind, else empty
 NEW key
 IF kind="REP" QUIT $$REPRODUCTIVE
 SET key=$SELECT(kind="VIF":"PEDIATRIC",kind="BMSR":"PEDIATRIC",kind="VELD":"ELDER CASE",kind="VAST":"ASTHMA",1:"")
 IF key="" SET key=$SELECT(kind="VTXC":"TX CONTRACT",kind="VER":"ER",1:"")
 IF key="" QUIT ""
 SET key="MEVZ "_key_" EDIT"
 IF $$HOLDS^MEVKEYS("PROVIDER") QUIT ""
 IF $$HOLDS^MEVKEYS(key) QUIT ""
 QUIT "-1^You hold neither the PROVIDER key nor the "_key_" key."
 ;
REPRODUCTIVE() ; The same for reproductive histories: by keys and by the parameter of the user or the class
 NEW class,disabled
 SET disabled="-1^Editing of the reproductive history is disabled for "
 IF $$HOLDS^MEVKEYS("MEVZ VIEW ONLY") QUIT "-1^You hold the MEVZ VIEW ONLY key."
 IF '$$HOLDS^MEVKEYS("PROVIDER"),'$$HOLDS^MEVKEYS("MEVZ REP HIST EDIT") DO  QUIT key
 . SET key="-1^You hold neither the PROVIDER key nor the MEVZ REP HIST EDIT key."
 IF $$VALUE^MEVKEYS("MEV DISABLE REP HIST EDITING") QUIT disabled_"you."
 SET class=$PIECE(^MEVUSR(user,0),"^",3)
 IF class'="",$GET(^MEVCLS(class,"PAR","MEV DISABLE REP HIST EDITING")) QUIT disabled_"your user class."
 QUIT ""
