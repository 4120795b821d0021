MEVSAMPLE ; Creates the sample data: invented people, from a fixed seed, with dates relative to today
 ; The same seed creates the same people on every machine, and an infant stays an infant whenever the data is created.
 ;
CREATE ; Entry point: fills an empty database with tables and, unless mev_empty is set, with people
 ; Reports its progress to the session's client if mev_frames is 1.
 NEW dfn,frames,patients,seed,today,writing
 SET $ETRAP="ZHALT 9"
 SET frames=$ZTRNLNM("mev_frames"),seed=20260315,patients=2000,today=$$TODAY^MEVDATE
 USE $PRINCIPAL:(NOWRAP:WIDTH=1048576)
 DO START^MEVFILES,FILL^MEVSAMPLETABLES
 IF $ZTRNLNM("mev_empty") HALT
 DO SAMPLE^MEVDATAVERSION
 DO USERS,PROVIDERS
 DO PROGRESS(5)
 DO ALL^MEVSAMPLESTORIES
 FOR dfn=$PIECE(^MEVPAT(0),"^",3)+1:1:patients DO
 . DO PATIENT(dfn)
 . IF dfn#100=0 DO PROGRESS(dfn*95\patients+5)
 HALT
 ;
PROGRESS(percent) ; Sends a frame
 IF frames DO FRAME^MEVSESSION("P"_percent_$CHAR(10)_"Creating the sample data")
 QUIT
 ;
RANDOM(count) ; A number from 1 to count
 SET seed=seed*16807#2147483647
 QUIT seed#count+1
 ;
CHANCE(percent) ; True with this probability
 QUIT $$RANDOM(100)'>percent
 ;
PICK(list) ; One piece of a list separated by ","
 QUIT $PIECE(list,",",$$RANDOM($LENGTH(list,",")))
 ;
USERS ; Creates the users who may sign on
 NEW class,ien,index,keys,line,node,text
 SET class=$$FILE^MEVFILES("^MEVCLS",0,"TRAINEES"),^MEVCLS(class,"PAR","MEV DISABLE REP HIST EDITING")=1
 FOR line=1:1 SET text=$PIECE($TEXT(USERLIST+line),";;",2,9) QUIT:text=""  DO
 . SET node=$PIECE(text,";")_"^"_$PIECE(text,";",2)_"^"_$SELECT($PIECE(text,";",3)="TRAINEES":class,1:"")_"^1"
 . SET ien=$$FILE^MEVFILES("^MEVUSR",0,node),keys=$PIECE(text,";",4)
 . IF keys'="" FOR index=1:1:$LENGTH(keys,",") SET ^MEVUSR(ien,"KEY",$PIECE(keys,",",index))=""
 . IF $PIECE(text,";",3)="BLOCKED" SET ^MEVUSR(ien,"PAR","MEV DISABLE REP HIST EDITING")=1
 QUIT
 ;
USERLIST ; name;description;class;keys
 ;;SORREL,ADA;Provider;;PROVIDER,MEVZ CAC
 ;;BRIGHTWATER,NELL;Nurse, pediatric records only;;MEVZ PEDIATRIC EDIT
 ;;GLASS,VIOLA;Provider who may only view;;PROVIDER,MEVZ VIEW ONLY
 ;;HALTON,PIERS;Provider, reproductive history blocked personally;BLOCKED;PROVIDER
 ;;NEWCOMB,TESSA;Provider, reproductive history blocked by user class;TRAINEES;PROVIDER
 ;;ROLLINS,COLE;Asthma registry coordinator;;MEVZ ASTHMA EDIT,QASZMENU
 ;;PACT,MILO;Treatment contracts only;;MEVZ TX CONTRACT EDIT
 ;;BARE,JUNO;No key at all;;
 ;;
PROVIDERS ; Creates providers who may not sign on, for records to name
 NEW count,ien
 FOR count=1:1:40 DO
 . SET ien=$$FILE^MEVFILES("^MEVUSR",0,$$NAME^MEVSAMPLENAMES($$PICK("F,M"))_"^Provider^^0")
 . SET ^MEVUSR(ien,"KEY","PROVIDER")=""
 QUIT
 ;
PROVIDER() ; One of these providers
 QUIT $$RANDOM(40)+8
 ;
PATIENT(dfn) ; Creates a patient of any age with a plausible history
 NEW age,birth,count,sex,visit
 SET sex=$SELECT($$CHANCE(1):"U",1:$$PICK("F,M")),age=$$RANDOM(100)-1
 SET birth=$$ADD^MEVDATE($$YEARSAGO^MEVDATE(age),-($$RANDOM(364)))
 DO REGISTER(dfn,$$NAME^MEVSAMPLENAMES(sex),sex,birth)
 FOR count=1:1:$$RANDOM(13)-1 DO
 . SET visit=$$VISIT(dfn,$$SINCE(birth,1095))
 . DO RECORDS^MEVSAMPLERECORDS(dfn,visit,age)
 IF sex="F",age>8,$$CHANCE(60) DO REPRODUCTIVE^MEVSAMPLERECORDS(dfn,age)
 IF age<12 DO CHILD^MEVSAMPLERECORDS(dfn,birth)
 IF $$CHANCE(25) DO REFUSAL^MEVSAMPLERECORDS(dfn,$$SINCE(birth,1500)\1)
 QUIT
 ;
REGISTER(dfn,name,sex,birth) ; Files a patient
 SET dfn=$$FILE^MEVFILES("^MEVPAT",dfn,name_"^"_sex_"^"_birth)
 QUIT
 ;
SINCE(birth,days) ; A date and time in the last days, not before the birth
 NEW back,lived
 SET lived=$HOROLOG-$$DAY^MEVDATE(birth),back=$SELECT(lived<days:lived,1:days)
 QUIT $$ADD^MEVDATE(today,-($$RANDOM(back+1)-1))_"."_$$CLOCKTIME
 ;
CLOCKTIME() ; A time during working hours, without trailing zeros
 NEW time
 SET time=$TRANSLATE($JUSTIFY($$RANDOM(9)+7,2)_$JUSTIFY($$RANDOM(12)*5-5,2)," ","0")
 FOR  QUIT:$EXTRACT(time,$LENGTH(time))'="0"  SET time=$EXTRACT(time,1,$LENGTH(time)-1)
 QUIT time
 ;
VISIT(dfn,date) ; Files a visit
 NEW category
 SET category=$$PICK("AMBULATORY,AMBULATORY,AMBULATORY,TELEPHONE,HOSPITALIZATION,HOME VISIT")
 QUIT $$FILEAT^MEVFILES("^MEVVST",0,date_"^"_dfn_"^"_$$RANDOM(8)_"^"_$$PROVIDER_"^"_category,dfn,date)
